#include "app/emptypage.h"

#include <QLabel>
#include <QVBoxLayout>

namespace wb
{

EmptyPage::EmptyPage(const QString &caption, QWidget *parent) : Page(parent)
{
    auto *label = new QLabel(tr("%1\nЭтой страницы в этой версии ещё нет.").arg(caption), this);
    label->setObjectName(QStringLiteral("picPageEmpty"));
    label->setAlignment(Qt::AlignCenter);
    (new QVBoxLayout(this))->addWidget(label);
}

} // namespace wb
