#include "widgets/numberfield.h"

#include "widgets/digitbox.h"
#include "widgets/picturebutton.h"

#include <QHBoxLayout>

namespace wb
{

NumberField::NumberField(const QString &name, const QString &caption, std::int32_t maximum, const frmRes &res,
                         QWidget *parent)
    : QWidget(parent), m_res(res), m_name(name), m_row(new QHBoxLayout(this)),
      m_box(new DigitBox(QStringLiteral("txt") + name, maximum, this))
{
    m_box->setAccessibleName(caption);
    m_row->setContentsMargins(0, 0, 0, 0);
    m_row->setSpacing(0);
    m_row->addWidget(m_box, 1);
    PictureButton *down = AddButton(1, res.imgMinus, tr("Уменьшить на 1"));
    PictureButton *up = AddButton(0, res.imgPlus, tr("Увеличить на 1"));
    down->setAutoRepeat(true);
    up->setAutoRepeat(true);
    connect(m_box, &DigitBox::Edited, this, &NumberField::Edited);
    connect(up, &QToolButton::clicked, this, &NumberField::UpWanted);
    connect(down, &QToolButton::clicked, this, &NumberField::DownWanted);
}

void NumberField::AddCopyButton(const QString &tip)
{
    m_copy = AddButton(2, m_res.imgToAll, tip);
    connect(m_copy, &QToolButton::clicked, this, &NumberField::CopyWanted);
}

PictureButton *NumberField::AddButton(int index, const QIcon &picture, const QString &tip)
{
    auto *button = new PictureButton(QStringLiteral("cmd%1(%2)").arg(m_name).arg(index), picture, tip, this);
    button->setIconSize(QSize(16, 16));
    m_row->addWidget(button);
    return button;
}

void NumberField::SetCopyEnabled(bool enabled)
{
    m_copy->setEnabled(enabled);
}

void NumberField::SetValue(std::int32_t value)
{
    m_box->SetValue(value);
}

} // namespace wb
