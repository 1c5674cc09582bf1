#include "app/pagebuttons.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QPushButton>

namespace wb
{

namespace
{

const char *const Captions[] = {"ResViewer",  "GI Editor",    "GAI Editor", "HAI Editor", "Anim Creator",
                                "DAT Editor", "PKG UnPacker", "PKG Packer", "Опции"};

} // namespace

PageButtons::PageButtons(QWidget *parent) : QWidget(parent), m_group(new QButtonGroup(this))
{
    setObjectName(QStringLiteral("picPages"));
    setAttribute(Qt::WA_StyledBackground);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(6, 0, 6, 0);
    row->setSpacing(0);
    const int last = int(std::size(Captions)) - 1;
    for (int page = 0; page <= last; ++page) {
        auto *button = new QPushButton(QString::fromUtf8(Captions[page]), this);
        button->setObjectName(QStringLiteral("cmdPage(%1)").arg(page));
        button->setCheckable(true);
        button->setFocusPolicy(Qt::TabFocus);
        m_group->addButton(button, page);
        if (page == last)
            row->addStretch(1);
        row->addWidget(button);
    }
    m_group->button(0)->setChecked(true);
    connect(m_group, &QButtonGroup::idClicked, this, &PageButtons::Chosen);
}

void PageButtons::Press(int page)
{
    m_group->button(page)->click();
}

} // namespace wb
