#include "support/pictures.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace wb::bench
{

namespace
{

struct Colour {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 255;
};

// One well mixed 32-bit value for each lattice point.
std::uint32_t Hash(int x, int y, std::uint32_t seed)
{
    std::uint32_t h = seed + std::uint32_t(x) * 0x9E3779B1U + std::uint32_t(y) * 0x85EBCA77U;
    h = (h ^ (h >> 15)) * 0x2C1B3C6DU;
    h = (h ^ (h >> 12)) * 0x297A2D39U;
    return h ^ (h >> 15);
}

double Lattice(int x, int y, std::uint32_t seed)
{
    return Hash(x, y, seed) / 4294967295.0;
}

// Smoothly interpolated lattice values, 0 to 1.
double ValueNoise(double x, double y, std::uint32_t seed)
{
    const int left = int(std::floor(x));
    const int top = int(std::floor(y));
    const auto smooth = [](double t) { return t * t * (3 - 2 * t); };
    const double across = smooth(x - left);
    const double down = smooth(y - top);
    const double upper = std::lerp(Lattice(left, top, seed), Lattice(left + 1, top, seed), across);
    const double lower = std::lerp(Lattice(left, top + 1, seed), Lattice(left + 1, top + 1, seed), across);
    return std::lerp(upper, lower, down);
}

// Octaves of value noise, each half as large and half as strong as the one before; 0 to 1.
double Clouds(double x, double y, int octaves, std::uint32_t seed)
{
    double sum = 0;
    double reach = 0;
    double strength = 1;
    for (int octave = 0; octave < octaves; ++octave) {
        sum += strength * ValueNoise(x, y, seed + std::uint32_t(octave));
        reach += strength;
        strength /= 2;
        x *= 2;
        y *= 2;
    }
    return sum / reach;
}

std::uint8_t ToByte(double value)
{
    return std::uint8_t(std::lround(std::clamp(value, 0.0, 255.0)));
}

// Asks `shade` for the colour of every pixel; x and y run from 0 to 1 across the picture, y downwards.
template <typename Shade>
MadePicture Paint(int width, int height, Shade &&shade)
{
    MadePicture made{width, height, std::vector<std::uint8_t>(std::size_t(width) * std::size_t(height) * 4)};
    std::uint8_t *pixel = made.pixels.data();
    for (int row = height - 1; row >= 0; --row) {
        for (int column = 0; column < width; ++column, pixel += 4) {
            const Colour colour = shade((column + 0.5) / width, (row + 0.5) / height);
            pixel[3] = ToByte(colour.alpha);
            if (pixel[3] == 0)
                continue;
            pixel[0] = ToByte(colour.blue);
            pixel[1] = ToByte(colour.green);
            pixel[2] = ToByte(colour.red);
        }
    }
    return made;
}

struct Body {
    double x, y, radius;
    Colour colour;
};

constexpr std::array<Body, 7> Bodies = {{
    {0.22, 0.34, 0.17, {.red = 190, .green = 120, .blue = 70}},
    {0.55, 0.25, 0.12, {.red = 90, .green = 130, .blue = 190}},
    {0.80, 0.38, 0.15, {.red = 120, .green = 160, .blue = 80}},
    {0.36, 0.72, 0.20, {.red = 160, .green = 150, .blue = 140}},
    {0.68, 0.70, 0.14, {.red = 200, .green = 180, .blue = 90}},
    {0.90, 0.82, 0.08, {.red = 200, .green = 60, .blue = 60}},
    {0.10, 0.85, 0.09, {.red = 110, .green = 80, .blue = 150}},
}};

// 0 at the body's middle, 1 at its ragged edge.
double Depth(const Body &body, double x, double y)
{
    const double ragged = 0.85 + 0.3 * Clouds(x * 14, y * 14, 3, 11);
    return std::hypot(x - body.x, (y - body.y) * 0.75) / (body.radius * ragged);
}

} // namespace

MadePicture MakeSprite(int width, int height)
{
    return Paint(width, height, [](double x, double y) {
        for (const Body &body : Bodies) {
            const double depth = Depth(body, x, y);
            if (depth >= 1)
                continue;
            const double texture = 0.7 + 0.6 * Clouds(x * 40, y * 40, 4, 23);
            const double light = (1.1 - 0.6 * depth * depth + 0.8 * (body.x - x + body.y - y)) * texture;
            return Colour{body.colour.red * light, body.colour.green * light, body.colour.blue * light, 255};
        }
        return Colour{.alpha = 0};
    });
}

MadePicture MakeGraded(int width, int height)
{
    return Paint(width, height, [](double x, double y) {
        double nearest = 2;
        const Body *body = Bodies.data();
        for (const Body &candidate : Bodies) {
            const double depth = Depth(candidate, x, y);
            if (depth < nearest) {
                nearest = depth;
                body = &candidate;
            }
        }
        const double haze = Clouds(x * 9, y * 9, 4, 37);
        const double alpha = 255 * std::clamp(1.6 - 1.5 * nearest, 0.0, 1.0) * (0.5 + haze);
        const double light = 0.8 + 0.5 * haze;
        return Colour{body->colour.red * light, body->colour.green * light, body->colour.blue * light, alpha};
    });
}

MadePicture MakePhoto(int width, int height)
{
    return Paint(width, height, [width, height](double x, double y) {
        const double horizon = 0.35 + 0.2 * Clouds(x * 5, 0, 5, 51);
        const double grain = 5 * (Lattice(int(x * width), int(y * height), 77) - 0.5);
        if (y < horizon) {
            const double cloud = std::clamp(2.2 * Clouds(x * 6, y * 9, 6, 61) - 0.8, 0.0, 1.0);
            return Colour{std::lerp(90 + 90 * y, 240.0, cloud) + grain,
                          std::lerp(140 + 80 * y, 238.0, cloud) + grain,
                          std::lerp(210 + 40 * y, 235.0, cloud) + grain};
        }
        const double relief = Clouds(x * 12, y * 24, 7, 71);
        const double light = 0.4 + 1.1 * relief;
        const double dryness = std::clamp(2 * Clouds(x * 3, y * 5, 4, 81) - 0.5, 0.0, 1.0);
        return Colour{std::lerp(70.0, 170.0, dryness) * light + grain,
                      std::lerp(110.0, 140.0, dryness) * light + grain,
                      std::lerp(50.0, 90.0, dryness) * light + grain};
    });
}

} // namespace wb::bench
