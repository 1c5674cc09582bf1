#include "scenery.h"

#include "noise.h"

#include <algorithm>
#include <cmath>

namespace wb
{

namespace
{

const QVector3D Light = QVector3D(-0.55F, -0.5F, 0.67F).normalized();

QVector3D Rgb(const QColor &colour)
{
    return {colour.redF(), colour.greenF(), colour.blueF()};
}

QVector3D Mix(QVector3D a, QVector3D b, float t)
{
    return a + (b - a) * std::clamp(t, 0.0F, 1.0F);
}

// 0 below `from`, 1 above `to`, smooth between.
float Rise(float from, float to, float value)
{
    const float t = std::clamp((value - from) / (to - from), 0.0F, 1.0F);
    return t * t * (3 - 2 * t);
}

QRgb Pixel(QVector3D colour, float alpha)
{
    const auto byte = [](float part) { return int(std::lround(std::clamp(part, 0.0F, 1.0F) * 255)); };
    return qRgba(byte(colour.x()), byte(colour.y()), byte(colour.z()), byte(alpha));
}

// A picture whose pixel at (x, y) is shade(x, y).
template <typename Shade>
QImage Paint(int width, int height, Shade shade)
{
    QImage image(width, height, QImage::Format_ARGB32);
    for (int y = 0; y < height; ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < width; ++x)
            line[x] = shade(float(x) + 0.5F, float(y) + 0.5F);
    }
    return image;
}

// The colour of a planet's ground or clouds at a point of the unit sphere.
QVector3D Surface(const PlanetLook &look, QVector3D point)
{
    const QVector3D offset(look.seed, look.seed, look.seed);
    if (look.banded) {
        const float swirl = Fractal(point * QVector3D(1.5F, 4, 1.5F) + offset, 5);
        const float band = 0.5F + 0.5F * std::sin(point.y() * 14 + swirl * 5);
        return Mix(Mix(Rgb(look.sea), Rgb(look.shore), band), Rgb(look.land),
                   Rise(0.5F, 0.75F, swirl) * 0.7F);
    }
    const float height = Fractal(point * 2.2F + offset, 6);
    const QVector3D ground = Mix(Rgb(look.shore), Rgb(look.land), Rise(0.54F, 0.66F, height));
    const QVector3D dry = Mix(Rgb(look.sea) * (0.6F + height * 0.8F), ground, Rise(0.51F, 0.53F, height));
    const float cloud = Fractal(point * QVector3D(3, 6, 3) - offset, 5);
    return Mix(dry, QVector3D(1, 1, 1), Rise(0.55F, 0.75F, cloud) * 0.85F);
}

} // namespace

QImage DrawPlanet(int size, const PlanetLook &look)
{
    const float centre = float(size) / 2, radius = float(size) * 0.41F;
    return Paint(size, size, [&](float px, float py) {
        const float x = (px - centre) / radius, y = (py - centre) / radius, distance = std::hypot(x, y);
        // The glow is brightest on the lit side and gone where the picture ends.
        const float facing = 0.5F + 0.5F * (x * Light.x() + y * Light.y()) / std::max(distance, 0.01F);
        const float glow = std::pow(1 - Rise(0.97F, 1.2F, distance), 2.0F) * (0.15F + 0.65F * facing);
        if (distance >= 1 + 1 / radius)
            return Pixel(Rgb(look.air), glow);
        const QVector3D normal(x, y, std::sqrt(std::max(0.0F, 1 - distance * distance)));
        const float day = Rise(-0.15F, 0.9F, QVector3D::dotProduct(normal, Light));
        const QVector3D lit = Surface(look, normal) * (0.04F + day * 1.1F);
        const QVector3D hazy = Mix(lit, Rgb(look.air) * (0.2F + day), std::pow(distance, 6.0F) * 0.6F);
        const float inside = std::clamp((1 - distance) * radius + 0.5F, 0.0F, 1.0F);
        return Pixel(Mix(Rgb(look.air), hazy, inside), inside + (1 - inside) * glow);
    });
}

QImage DrawAsteroid(int size, float seed)
{
    const float centre = float(size) / 2, radius = float(size) * 0.42F;
    const QVector3D offset(seed, seed * 2, seed * 3);
    const auto bump = [&](QVector3D point) {
        // Craters are the dents where coarse noise runs low.
        const float dent = Rise(0.3F, 0.42F, Fractal(point * 3.1F + offset, 2));
        return Fractal(point * 5 + offset, 5) * 0.5F + dent * 0.3F;
    };
    return Paint(size, size, [&](float px, float py) {
        const float x = (px - centre) / radius, y = (py - centre) / radius, distance = std::hypot(x, y);
        const QVector3D rim = QVector3D(x, y, 0) / std::max(distance, 0.01F);
        const float edge = 0.72F + 0.4F * Fractal(rim * 1.6F + offset, 4);
        if (distance >= edge)
            return qRgba(0, 0, 0, 0);
        const float flat = distance / edge;
        const QVector3D ball(x, y, std::sqrt(1 - flat * flat));
        const float step = 0.02F, here = bump(ball);
        const QVector3D slope(bump(ball + QVector3D(step, 0, 0)) - here,
                              bump(ball + QVector3D(0, step, 0)) - here, 0);
        const float day = Rise(-0.1F, 1, QVector3D::dotProduct((ball - slope * 12).normalized(), Light));
        const QVector3D stone = Mix(QVector3D(0.36F, 0.31F, 0.28F), QVector3D(0.72F, 0.64F, 0.55F), here);
        return Pixel(stone * (0.1F + day * 1.15F), 1);
    });
}

QImage DrawStarField(int width, int height, float seed)
{
    const QVector3D offset(seed, -seed, seed / 2);
    const auto salt = std::int32_t(seed * 10);
    return Paint(width, height, [&](float px, float py) {
        const QVector3D place = QVector3D(px, py, 0) / 260 + offset;
        const float gas = Rise(0.38F, 0.74F, Fractal(place, 6));
        const float warm = Fractal(place * 0.8F + QVector3D(40, 0, 0), 4);
        const QVector3D dust =
            Mix(QVector3D(0.12F, 0.28F, 0.62F), QVector3D(0.62F, 0.2F, 0.42F), Rise(0.4F, 0.62F, warm));
        QVector3D colour = QVector3D(0.012F, 0.018F, 0.045F) + dust * gas * 1.15F;
        // At most one star in each cell of 18 pixels, with a halo that ends inside the cell.
        const float cell = 18;
        const auto column = std::int32_t(px / cell), row = std::int32_t(py / cell);
        const float bright = std::pow(Scatter(column, row, salt), 6.0F);
        const float starX = (float(column) + 0.2F + 0.6F * Scatter(column, row, salt + 1)) * cell;
        const float starY = (float(row) + 0.2F + 0.6F * Scatter(column, row, salt + 2)) * cell;
        const float away = std::hypot(px - starX, py - starY);
        const float shine = bright * std::exp(-away * away / (0.35F + 2.2F * bright));
        const QVector3D tint =
            Mix(QVector3D(0.7F, 0.82F, 1), QVector3D(1, 0.88F, 0.7F), Scatter(column, row, salt + 3));
        return Pixel(colour + tint * shine * 1.4F, 1);
    });
}

QImage DrawExplosion(int size, int index, int count)
{
    const float time = float(index + 1) / float(count), centre = float(size) / 2;
    const float radius = centre * 0.9F * std::sqrt(time);
    return Paint(size, size, [&](float px, float py) {
        const float x = (px - centre) / radius, y = (py - centre) / radius, distance = std::hypot(x, y);
        const float flame = Fractal(QVector3D(px / 20, py / 20, time * 3), 5);
        const float heat = std::clamp(1.25F - distance - (flame - 0.35F) * (0.5F + time), 0.0F, 1.0F);
        const float left = 1 - Rise(0.45F, 1.05F, time);
        const float glow = heat * (1.3F - time);
        const QVector3D fire =
            Mix(Mix(QVector3D(0.32F, 0.1F, 0.08F), QVector3D(0.95F, 0.38F, 0.08F), Rise(0.05F, 0.4F, glow)),
                QVector3D(1, 0.95F, 0.7F), Rise(0.4F, 0.85F, glow));
        const float fade = 1 - Rise(0.8F, 1.08F, std::hypot(px - centre, py - centre) / centre);
        return Pixel(fire, Rise(0.02F, 0.35F, heat) * left * fade);
    });
}

} // namespace wb
