#include "widgets/elidedlabel.h"

#include <QPainter>
#include <QStyle>

namespace wb
{

ElidedLabel::ElidedLabel(const QString &name, QWidget *parent) : QLabel(parent)
{
    setObjectName(name);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    setTextFormat(Qt::PlainText); // names may look like markup
}

void ElidedLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideMiddle, width());
    style()->drawItemText(&painter, rect(), int(alignment()), palette(), isEnabled(), shown,
                          foregroundRole());
}

} // namespace wb
