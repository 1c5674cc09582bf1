#include "sprites.h"

#include <QPainter>
#include <QPainterPath>
#include <QtMath>

#include <cmath>
#include <utility>

namespace wb
{

namespace
{

QImage Blank(int width, int height)
{
    // The painter composes exactly only on premultiplied pixels; Finish() undoes it.
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

QImage Finish(const QImage &image)
{
    return image.convertToFormat(QImage::Format_ARGB32);
}

void DrawGlow(QPainter &painter, QPointF centre, double width, double height, const QColor &colour)
{
    QRadialGradient gradient(0, 0, 1);
    QColor rim = colour;
    rim.setAlpha(0);
    gradient.setColorAt(0, QColor(255, 255, 255, 240));
    gradient.setColorAt(0.25, colour);
    gradient.setColorAt(1, rim);
    painter.save();
    painter.translate(centre);
    painter.scale(width, height);
    painter.setPen(Qt::NoPen);
    painter.setBrush(gradient);
    painter.drawEllipse(QPointF(0, 0), 1, 1);
    painter.restore();
}

// The picture with a colour table of its own colours, which are 256 at most, in the order of their first use.
QImage Index(const QImage &image)
{
    QImage indexed(image.size(), QImage::Format_Indexed8);
    QList<QRgb> table;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const QRgb colour = image.pixel(x, y);
            if (!table.contains(colour))
                table.append(colour);
            indexed.scanLine(y)[x] = uchar(table.indexOf(colour));
        }
    indexed.setColorTable(table);
    return indexed;
}

// The lower half of a ship's plan and its mirror image above the axis y = 0, each lit for its side.
void DrawBothSides(QPainter &painter, const QPolygonF &half, const QColor &colour)
{
    painter.setPen(QPen(colour.darker(230), 1.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    for (const double side : {-1.0, 1.0}) {
        const QRectF box = half.boundingRect();
        QLinearGradient shade(0, 0, 0, box.bottom());
        shade.setColorAt(0, side < 0 ? colour.lighter(125) : colour);
        shade.setColorAt(1, side < 0 ? colour.darker(115) : colour.darker(190));
        painter.save();
        painter.scale(1, side);
        painter.setBrush(shade);
        painter.drawPolygon(half);
        painter.restore();
    }
}

} // namespace

QImage DrawShip(const QColor &hull, const QColor &trim)
{
    QImage image = Blank(240, 180);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(130, 90);
    for (const double side : {-1.0, 1.0}) {
        DrawGlow(painter, {-78, side * 17}, 44, 11, QColor(80, 170, 255, 200));
        DrawGlow(painter, {-62, side * 60}, 26, 7, QColor(80, 170, 255, 180));
    }
    DrawBothSides(painter, {{{34, 10}, {-8, 74}, {-40, 82}, {-34, 60}, {-52, 22}, {-30, 10}}},
                  hull.darker(115));
    DrawBothSides(painter, {{{2, 46}, {-8, 74}, {-40, 82}, {-37, 70}}}, trim);
    DrawBothSides(painter, {{{-30, 54}, {-30, 65}, {-58, 67}, {-62, 60}, {-58, 53}}}, hull.darker(150));
    DrawBothSides(painter, {{{-20, 9}, {-20, 25}, {-66, 26}, {-74, 17}, {-66, 8}}}, hull.darker(140));
    DrawBothSides(painter, {{{98, 0}, {84, 7}, {40, 15}, {-30, 17}, {-60, 9}, {-60, 0}}}, hull);
    DrawBothSides(painter, {{{98, 0}, {84, 7}, {66, 10.4}, {70, 0}}}, trim);

    QLinearGradient glass(0, -8, 0, 8);
    glass.setColorAt(0, QColor(0xC9, 0xEC, 0xFF));
    glass.setColorAt(0.5, QColor(0x4D, 0x9B, 0xE7));
    glass.setColorAt(1, QColor(0x1B, 0x3F, 0x66));
    painter.setPen(QPen(QColor(0x1B, 0x2A, 0x3A), 1.2));
    painter.setBrush(glass);
    painter.drawEllipse(QPointF(38, 0), 18, 7);
    painter.end();
    return Finish(image);
}

QImage DrawButton(ButtonState state)
{
    struct Look {
        QRgb top, bottom, rim, glyph;
    };
    static constexpr Look looks[] = {{0xFF5A7290, 0xFF2E3F54, 0xFF8FB4DC, 0xFFE8F2FF},
                                     {0xFF7FA6D0, 0xFF3D6A9C, 0xFFCFE6FF, 0xFFFFFFFF},
                                     {0xFF2A3848, 0xFF41587A, 0xFF7FA6D0, 0xFFF2B84B},
                                     {0xFF6A727C, 0xFF4A525C, 0xFF7C858F, 0xFF9AA2AB}};
    const Look &look = looks[int(state)];
    QImage image = Blank(120, 48);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, 22));
    for (int spread = 0; spread < 5; ++spread)
        painter.drawRoundedRect(QRectF(1 + spread, 2 + spread, 118 - 2 * spread, 46 - 2 * spread), 12, 12);

    QLinearGradient fill(0, 4, 0, 42);
    fill.setColorAt(0, QColor::fromRgba(look.top));
    fill.setColorAt(1, QColor::fromRgba(look.bottom));
    painter.setBrush(fill);
    painter.setPen(QPen(QColor::fromRgba(look.rim), 1.5));
    painter.drawRoundedRect(QRectF(4.75, 3.75, 110.5, 38.5), 9, 9);
    painter.setPen(QPen(QColor::fromRgba(look.glyph), 4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(QPolygonF({{62, 13}, {72, 23}, {62, 33}}));
    painter.drawLine(QPointF(44, 23), QPointF(70, 23));
    painter.end();
    return Finish(image);
}

QImage DrawRadar(int frame, int frames)
{
    constexpr double whole = 360;
    const double beam = whole * frame / frames;
    QImage image(160, 160, QImage::Format_RGB32);
    image.fill(QColor(0x0B, 0x14, 0x12));
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(80, 80);
    QConicalGradient sweep(0, 0, beam); // the picture's angles run against the clock, and so does the beam
    sweep.setColorAt(0, QColor(0x0F, 0x2A, 0x20));
    sweep.setColorAt(0.75, QColor(0x0F, 0x2A, 0x20));
    sweep.setColorAt(1, QColor(0x3A, 0xB8, 0x72));
    painter.setPen(QPen(QColor(0x2E, 0x7A, 0x58), 1));
    painter.setBrush(sweep);
    painter.drawEllipse(QPointF(0, 0), 72, 72);
    painter.setBrush(Qt::NoBrush);
    for (const double radius : {24.0, 48.0})
        painter.drawEllipse(QPointF(0, 0), radius, radius);
    painter.drawLine(-72, 0, 72, 0);
    painter.drawLine(0, -72, 0, 72);
    painter.setPen(Qt::NoPen);
    for (const auto &[angle, radius] : {std::pair(35.0, 54.0), {140.0, 33.0}, {255.0, 60.0}, {310.0, 40.0}}) {
        const double passed = std::fmod(beam - angle + whole, whole) / whole; // since the beam lit it
        const double turned = qDegreesToRadians(angle);
        painter.setBrush(QColor(0xC8, 0xFF, 0xD8, int(255 * (1 - passed))));
        painter.drawEllipse(QPointF(radius * std::cos(turned), -radius * std::sin(turned)), 3.5, 3.5);
    }
    painter.end();
    return Finish(image);
}

QImage DrawPortrait()
{
    // Drawn small and without smoothing, so that the colours stay few, then doubled.
    QImage image = Blank(64, 80);
    QPainter painter(&image);
    painter.setPen(Qt::NoPen);
    const auto ellipse = [&](QRgb colour, int x, int y, int width, int height) {
        painter.setBrush(QColor(colour));
        painter.drawEllipse(x, y, width, height);
    };
    const auto polygon = [&](QRgb colour, const QPolygon &shape) {
        painter.setBrush(QColor(colour));
        painter.drawPolygon(shape);
    };
    for (int band = 0; band < 8; ++band) // the suit, lighter towards the light
        ellipse(QColor(0x26 + band * 7, 0x34 + band * 8, 0x4C + band * 10).rgb(), 4 + band, 54 + band,
                56 - band * 4, 60);
    polygon(0xF2B84B, QPolygon({{28, 62}, {34, 62}, {32, 80}, {30, 80}}));
    ellipse(0x1E2A38, 17, 48, 30, 14);
    ellipse(0x8A95A3, 18, 48, 28, 11);
    polygon(0x4E8A4A, QPolygon({{25, 44}, {38, 44}, {40, 55}, {23, 55}}));
    for (int band = 0; band < 10; ++band)
        ellipse(QColor(0x4A + band * 6, 0x86 + band * 7, 0x46 + band * 5).rgb(), 15 + band / 2, 10 + band / 2,
                34 - band * 2, 42 - band * 2);
    polygon(0x3B6E3A, QPolygon({{20, 12}, {17, 1}, {25, 10}}));
    polygon(0x3B6E3A, QPolygon({{44, 12}, {47, 1}, {39, 10}}));
    for (const int x : {20, 35}) {
        ellipse(0x2A4A2A, x - 1, 24, 12, 11);
        ellipse(0xF6F1D8, x, 25, 10, 9);
        ellipse(0xC0392B, x + 3, 26, 5, 7);
        ellipse(0x1A0A0A, x + 4, 28, 3, 4);
    }
    polygon(0x35602F, QPolygon({{18, 22}, {30, 24}, {30, 26}, {18, 25}}));
    polygon(0x35602F, QPolygon({{46, 22}, {34, 24}, {34, 26}, {46, 25}}));
    polygon(0x2C4F2A, QPolygon({{25, 43}, {32, 45}, {40, 42}, {32, 47}}));
    painter.end();
    return Index(image.scaled(128, 160));
}

} // namespace wb
