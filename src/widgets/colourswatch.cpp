#include "widgets/colourswatch.h"

#include "services/settings.h"
#include "widgets/colour.h"

#include <QPainter>

namespace wb
{

ColourSwatch::ColourSwatch(const QString &name, QWidget *parent) : QAbstractButton(parent)
{
    setObjectName(name);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setText(ColorText(m_colour));
}

void ColourSwatch::SetColour(std::int32_t colour)
{
    m_colour = colour;
    setText(ColorText(colour));
    update();
}

QSize ColourSwatch::sizeHint() const
{
    return {120, 30};
}

void ColourSwatch::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor fill = ToQColor(m_colour);
    const bool marked = hasFocus() || underMouse();
    painter.setPen(QPen(marked ? palette().highlight().color() : palette().mid().color(), marked ? 2 : 1));
    painter.setBrush(fill);
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 5, 5);
    // Black or white, whichever reads better on the colour.
    painter.setPen(qGray(fill.rgb()) > 140 ? Qt::black : Qt::white);
    painter.drawText(rect(), Qt::AlignCenter, text());
}

} // namespace wb
