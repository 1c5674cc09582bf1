#include "widgets/optionframe.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QRadioButton>

namespace wb
{

OptionFrame::OptionFrame(const char *name, const QString &title, const QStringList &captions, int columns,
                         QWidget *parent)
    : CompactFrame(title, parent), m_grid(new QGridLayout(this)), m_options(new QButtonGroup(this))
{
    m_grid->setContentsMargins(0, 0, 0, 0);
    m_grid->setSpacing(0);
    for (int i = 0; i < captions.size(); ++i) {
        auto *option = new QRadioButton(captions[i], this);
        option->setObjectName(QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(i));
        m_options->addButton(option, i);
        m_grid->addWidget(option, i / columns, i % columns);
    }
    connect(m_options, &QButtonGroup::idClicked, this, &OptionFrame::Chosen);
}

int OptionFrame::Count() const
{
    return int(m_options->buttons().size());
}

int OptionFrame::Checked() const
{
    return m_options->checkedId();
}

bool OptionFrame::IsOptionEnabled(int option) const
{
    return m_options->button(option)->isEnabled();
}

void OptionFrame::Check(int option)
{
    m_options->setExclusive(false);
    for (QAbstractButton *button : m_options->buttons())
        button->setChecked(m_options->id(button) == option);
    m_options->setExclusive(true);
}

void OptionFrame::EnableOption(int option, bool enabled)
{
    m_options->button(option)->setEnabled(enabled);
}

void OptionFrame::TakeNoFocus()
{
    for (QAbstractButton *button : m_options->buttons())
        button->setFocusPolicy(Qt::NoFocus);
}

void OptionFrame::AddButton(QAbstractButton *button)
{
    m_grid->addWidget(button, 0, m_grid->columnCount(), m_grid->rowCount(), 1,
                      Qt::AlignRight | Qt::AlignVCenter);
}

} // namespace wb
