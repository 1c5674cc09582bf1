// Colours as reduction handles them: as bytes of a picture, and as places in the space they are compared in.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace rastgl
{

// The four bytes of a pixel in one number: blue lowest, then green, red, alpha.
using Colour = std::uint32_t;

inline constexpr Colour OpaqueAlpha = 0xFF000000U;

constexpr std::uint32_t Channel(Colour colour, std::size_t channel)
{
    return (colour >> (8 * channel)) & 0xFF;
}
constexpr bool IsOpaque(Colour colour)
{
    return colour >= OpaqueAlpha;
}
constexpr bool IsVisible(Colour colour)
{
    return Channel(colour, 3) != 0;
}

// Blue, green and red times alpha / 255, rounded to the nearest.
constexpr Colour Premultiply(Colour colour)
{
    if (IsOpaque(colour))
        return colour;
    // Red and blue in one multiplication; (t + t / 256) / 256 with t = product + 128 is the exact rounded
    // division.
    const std::uint32_t alpha = colour >> 24;
    const std::uint32_t outer = (colour & 0x00FF00FFU) * alpha + 0x00800080U;
    const std::uint32_t green = Channel(colour, 1) * alpha + 0x80;
    return (((outer + ((outer >> 8) & 0x00FF00FFU)) >> 8) & 0x00FF00FFU) |
           ((green + (green >> 8)) & 0xFF00U) | alpha << 24;
}

// A place in the space in which colours are compared; 0 to 255 on every axis.
using Position = std::array<float, 4>;

inline float DistanceSquared(const Position &a, const Position &b)
{
    float sum = 0;
    for (std::size_t axis = 0; axis < 4; ++axis)
        sum += (a[axis] - b[axis]) * (a[axis] - b[axis]);
    return sum;
}

// The place of a premultiplied colour. With errors c of the three colours and a of alpha, the squared
// distance is sum(c^2) + a^2 - a * sum(c) / 2: half way between the plain distance of premultiplied colours
// and what is to be expected over a ground of unknown grey, where an error of the colour makes up for one of
// alpha. The plain distance leaves fine bright lines along the steps of glows and smoke.
inline Position ToPosition(const Position &premultiplied)
{
    constexpr float Ground = 0.25F;
    constexpr float AlphaScale = 0.9013878F; // sqrt(1 - 3 * Ground^2)
    const float rest = (255 - premultiplied[3]) * Ground;
    return {premultiplied[0] + rest, premultiplied[1] + rest, premultiplied[2] + rest,
            premultiplied[3] * AlphaScale};
}

inline Position ToPosition(Colour premultiplied)
{
    return ToPosition(Position{float(Channel(premultiplied, 0)), float(Channel(premultiplied, 1)),
                               float(Channel(premultiplied, 2)), float(Channel(premultiplied, 3))});
}

// The places between two corners.
struct Box {
    Position lowest = {};
    Position highest = {};
};

// The squared distance from a place to the farthest corner of the box.
inline float FarthestSquared(const Position &from, const Box &box)
{
    float sum = 0;
    for (std::size_t axis = 0; axis < 4; ++axis) {
        const float reach = std::max(from[axis] - box.lowest[axis], box.highest[axis] - from[axis]);
        sum += reach * reach;
    }
    return sum;
}

// Contains the places of all premultiplied colours from `lowest` to `highest` in every channel.
inline Box BoxAround(Colour lowest, Colour highest)
{
    constexpr Colour ColourBits = ~OpaqueAlpha;
    // The colour axes fall with rising alpha.
    Box box{.lowest = ToPosition((lowest & ColourBits) | (highest & OpaqueAlpha)),
            .highest = ToPosition((highest & ColourBits) | (lowest & OpaqueAlpha))};
    std::swap(box.lowest[3], box.highest[3]);
    return box;
}

} // namespace rastgl
