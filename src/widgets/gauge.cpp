#include "widgets/gauge.h"

#include <QPainter>

#include <algorithm>

namespace wb
{

Gauge::Gauge(const QString &name, QWidget *parent) : QWidget(parent)
{
    setObjectName(name);
}

void Gauge::SetMaximum(int maximum)
{
    m_maximum = maximum;
    update();
}

void Gauge::SetValue(int value)
{
    m_value = value;
    update();
}

void Gauge::SetBarColour(const QColor &colour)
{
    if (m_colour == colour)
        return;
    m_colour = colour;
    update();
}

QSize Gauge::sizeHint() const
{
    return {120, 8};
}

void Gauge::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const QRectF track = rect();
    const qreal radius = track.height() / 2;
    painter.setBrush(palette().mid());
    painter.drawRoundedRect(track, radius, radius);
    if (m_maximum <= 0 || m_value <= 0)
        return;
    QRectF bar = track;
    bar.setWidth(track.width() * std::min(1.0, double(m_value) / m_maximum));
    painter.setClipRect(bar);
    painter.setBrush(m_colour);
    painter.drawRoundedRect(track, radius, radius);
}

} // namespace wb
