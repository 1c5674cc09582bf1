// The pixel arithmetic of the game's files: 5-6-5 colours, premultiplying, transparency bytes.
#pragma once

#include <cstdint>

namespace wb
{

// 8-bit channels to 5-6-5: red in bits 15-11, green in 10-5, blue in 4-0. Each is ((c + 1) * 31 or 63) div
// 255.
constexpr std::uint16_t Pack565(std::uint8_t r, std::uint8_t g, std::uint8_t b)
{
    const int r5 = (r + 1) * 31 / 255;
    const int g6 = (g + 1) * 63 / 255;
    const int b5 = (b + 1) * 31 / 255;
    return static_cast<std::uint16_t>(r5 << 11 | g6 << 5 | b5);
}

// The high bits repeated below, so that 0 stays 0 and full stays full; Pack565 undoes both.
constexpr std::uint8_t Widen5(unsigned value)
{
    return static_cast<std::uint8_t>(value << 3 | value >> 2);
}
constexpr std::uint8_t Widen6(unsigned value)
{
    return static_cast<std::uint8_t>(value << 2 | value >> 4);
}

// A pixel read as a little-endian number: alpha in bits 31-24, then red, green, blue.
constexpr std::uint32_t PixelOf(std::uint8_t r, std::uint8_t g, std::uint8_t b, std::uint8_t a)
{
    return std::uint32_t(a) << 24 | std::uint32_t(r) << 16 | std::uint32_t(g) << 8 | b;
}

constexpr std::uint32_t Widen565(std::uint16_t value)
{
    return PixelOf(Widen5(value >> 11), Widen6(value >> 5 & 63), Widen5(value & 31), 255);
}

// c over base with alpha a: (255 - a) * base / 255 + c * a / 255, to the nearest integer. 255 is odd, so no
// sum lies halfway between two integers, and integers give exactly what rounding the fractions gives.
constexpr std::uint8_t BlendOver(std::uint8_t base, std::uint8_t c, std::uint8_t a)
{
    return static_cast<std::uint8_t>(((255 - a) * base + c * a + 127) / 255);
}

// Alpha to transparency byte: 0 opaque, 63 fully transparent.
constexpr std::uint8_t InvAlpha6(std::uint8_t a)
{
    return static_cast<std::uint8_t>(63 - (a >> 2));
}

// Transparency byte to alpha, spread over 0..255; InvAlpha6 undoes it. Above 63 counts as 63.
constexpr std::uint8_t AlphaOfTransparency(std::uint8_t t)
{
    return static_cast<std::uint8_t>(t > 63 ? 0 : ((63 - t) * 255 + 31) / 63);
}

} // namespace wb
