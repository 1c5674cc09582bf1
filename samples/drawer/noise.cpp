#include "noise.h"

#include <cmath>

namespace wb
{

namespace
{

float Ease(float t)
{
    return t * t * (3 - 2 * t);
}

float Lerp(float a, float b, float t)
{
    return a + (b - a) * t;
}

// Noise in [0, 1] with features of size 1.
float Smooth(QVector3D point)
{
    const float floorX = std::floor(point.x()), floorY = std::floor(point.y()),
                floorZ = std::floor(point.z());
    const auto x = std::int32_t(floorX), y = std::int32_t(floorY), z = std::int32_t(floorZ);
    const float tx = Ease(point.x() - floorX), ty = Ease(point.y() - floorY), tz = Ease(point.z() - floorZ);
    const auto row = [&](int dy, int dz) {
        return Lerp(Scatter(x, y + dy, z + dz), Scatter(x + 1, y + dy, z + dz), tx);
    };
    return Lerp(Lerp(row(0, 0), row(1, 0), ty), Lerp(row(0, 1), row(1, 1), ty), tz);
}

} // namespace

float Scatter(std::int32_t x, std::int32_t y, std::int32_t z)
{
    // Each step spreads every input bit over the word, so that neighbours have nothing in common.
    std::uint32_t h =
        std::uint32_t(x) * 0x9E3779B1U ^ std::uint32_t(y) * 0x85EBCA77U ^ std::uint32_t(z) * 0xC2B2AE3DU;
    h = (h ^ (h >> 15)) * 0x2C1B3C6DU;
    h = (h ^ (h >> 12)) * 0x297A2D39U;
    h ^= h >> 15;
    return float(h >> 8) / float(1U << 24);
}

float Fractal(QVector3D point, int octaves)
{
    float sum = 0, weight = 0.5F, total = 0;
    for (int octave = 0; octave < octaves; ++octave) {
        sum += weight * Smooth(point);
        total += weight;
        weight /= 2;
        point = point * 2 + QVector3D(17.3F, 5.1F, 9.7F);
    }
    return sum / total;
}

} // namespace wb
