#include "dat/valuebox.h"

#include "dat/datshowntext.h"

#include <QKeyEvent>
#include <QMimeData>
#include <QSignalBlocker>
#include <QTextDocument>

namespace wb
{

ValueBox::ValueBox(const QString &name, QWidget *parent) : QPlainTextEdit(parent)
{
    setObjectName(name);
    setTabChangesFocus(true);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    connect(this, &QPlainTextEdit::textChanged, this, [this] {
        // The raw text: the other one turns unbreakable blanks into common ones.
        const QString edited = EditedText(m_value, document()->toRawText());
        if (edited == m_value)
            return;
        m_value = edited;
        Q_EMIT Edited(m_value);
    });
}

void ValueBox::SetValue(const QString &value)
{
    const QSignalBlocker silent(this);
    const bool isWhole = value.size() <= LongestEdited;
    m_value = value;
    setReadOnly(!isWhole);
    setPlainText(ShownText(isWhole ? value : value.first(LongestEdited)));
}

void ValueBox::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
        QPlainTextEdit::keyPressEvent(event);
}

void ValueBox::insertFromMimeData(const QMimeData *source)
{
    if (!isReadOnly() && source->hasText())
        insertPlainText(ShownText(source->text()
                                      .replace(QStringLiteral("\r\n"), QStringLiteral(" "))
                                      .replace(u'\n', u' ')
                                      .replace(u'\r', u' ')));
}

} // namespace wb
