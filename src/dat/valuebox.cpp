#include "dat/valuebox.h"

#include "dat/datshowntext.h"

#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QSignalBlocker>
#include <QTextDocument>

#include <algorithm>

namespace wb
{

ValueBox::ValueBox(const QString &name, QWidget *parent) : QPlainTextEdit(parent)
{
    setObjectName(name);
    setTabChangesFocus(true);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    connect(this, &QPlainTextEdit::textChanged, this, [this] {
        const QString edited = BoxedValue();
        if (edited == m_value)
            return;
        m_value = edited;
        Q_EMIT Edited(m_value);
    });
}

void ValueBox::SetValue(const QString &value)
{
    const QSignalBlocker silent(this);
    m_value = value;
    setReadOnly(value.size() > LongestEdited);
    setPlainText(ShownText(QStringView(value).left(LongestEdited)));
}

// The raw text: the other one turns unbreakable blanks into common ones.
QString ValueBox::BoxedValue() const
{
    return MeantText(document()->toRawText());
}

QString ValueBox::SelectedValue() const
{
    const QTextCursor cursor = textCursor();
    const qsizetype start = cursor.selectionStart();
    return MeantText(QStringView(document()->toRawText()).sliced(start, cursor.selectionEnd() - start));
}

// Puts in what there is room for of a text that means itself.
void ValueBox::Insert(QString text)
{
    text.remove(QChar(u'\0'));
    // What is dragged within the box has left its old place already, and Edited has not told that.
    const qsizetype room = LongestEdited - BoxedValue().size() + SelectedValue().size();
    insertPlainText(ShownText(QStringView(text).left(std::max<qsizetype>(room, 0))));
}

void ValueBox::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        return;
    const QString text = event->text();
    if (!isReadOnly() && !text.isEmpty() && text[0].isPrint() && ShownText(text) != text)
        Insert(text);
    else
        QPlainTextEdit::keyPressEvent(event);
}

void ValueBox::inputMethodEvent(QInputMethodEvent *event)
{
    QInputMethodEvent meant(event->preeditString(), event->attributes());
    meant.setCommitString(ShownText(event->commitString()), event->replacementStart(),
                          event->replacementLength());
    QPlainTextEdit::inputMethodEvent(&meant);
    event->setAccepted(meant.isAccepted());
}

QMimeData *ValueBox::createMimeDataFromSelection() const
{
    auto *selected = new QMimeData;
    selected->setText(SelectedValue());
    return selected;
}

void ValueBox::insertFromMimeData(const QMimeData *source)
{
    if (!isReadOnly() && source->hasText())
        Insert(source->text());
}

} // namespace wb
