#include "archive/pathform.h"

#include "platform/nativepath.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

namespace wb
{

PathBox::PathBox(const QString &name, const QString &start, QString &saved, QWidget *parent)
    : QLineEdit(start, parent), m_saved(saved)
{
    setObjectName(name);
    connect(this, &QLineEdit::textChanged, this, [this](const QString &text) { m_saved = text; });
    connect(this, &QLineEdit::editingFinished, this, &PathBox::Path);
}

void PathBox::ApplySetting()
{
    if (!m_saved.isEmpty())
        setText(m_saved);
}

QString PathBox::Path()
{
    QString path = PathFromUserText(text());
    if (path != text())
        setText(path);
    return path;
}

PathForm::PathForm(QWidget *parent) : QWidget(parent), m_rows(new QGridLayout(this))
{
    m_rows->setContentsMargins(0, 0, 0, 0);
    m_rows->setHorizontalSpacing(8);
    m_rows->setVerticalSpacing(8);
}

PathBox *PathForm::AddPath(const Row &row, QString &saved, const std::function<void()> &choose)
{
    auto *caption = new QLabel(row.Caption, this);
    auto *box = new PathBox(QLatin1String(row.BoxName), row.Start, saved, this);
    box->setAccessibleName(row.Caption);
    auto *button = new QPushButton(tr("Обзор…"), this);
    button->setObjectName(QLatin1String(row.ButtonName));
    button->setToolTip(row.ButtonTip);
    button->setAccessibleName(row.ButtonTip);
    connect(button, &QPushButton::clicked, this, choose);
    const int place = m_rows->rowCount();
    m_rows->addWidget(caption, place, 0);
    m_rows->addWidget(box, place, 1);
    m_rows->addWidget(button, place, 2);
    return box;
}

void PathForm::AddOption(QWidget *option)
{
    m_rows->addWidget(option, m_rows->rowCount(), 1);
}

} // namespace wb
