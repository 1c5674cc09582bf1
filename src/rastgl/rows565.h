// Runs of pixels between 32 bits and 5-6-5, many at a time: what the layer drawing, the plane conversions and
// the run coder share. Pixels are B, G, R, A; 5-6-5 values are little-endian; nothing need be aligned. Source
// and target do not overlap.
#pragma once

#include "rastgl/color565.h"

#include <bit>
#include <cstddef>
#include <cstring>

namespace wb
{

static_assert(std::endian::native == std::endian::little, "pixels are loaded and stored as numbers");

inline std::uint16_t Load16(const std::uint8_t *place)
{
    std::uint16_t value;
    std::memcpy(&value, place, sizeof value);
    return value;
}

inline std::uint32_t Load32(const std::uint8_t *place)
{
    std::uint32_t value;
    std::memcpy(&value, place, sizeof value);
    return value;
}

inline void Store16(std::uint8_t *place, std::uint16_t value)
{
    std::memcpy(place, &value, sizeof value);
}
inline void Store32(std::uint8_t *place, std::uint32_t value)
{
    std::memcpy(place, &value, sizeof value);
}

inline std::uint16_t PackPixel(std::uint32_t pixel)
{
    return Pack565(pixel >> 16 & 255, pixel >> 8 & 255, pixel & 255);
}

// The colour premultiplied by the pixel's alpha.
inline std::uint16_t PackPremultipliedPixel(std::uint32_t pixel)
{
    const std::uint8_t a = pixel >> 24;
    return Pack565(BlendOver(0, pixel >> 16 & 255, a), BlendOver(0, pixel >> 8 & 255, a),
                   BlendOver(0, pixel & 255, a));
}

// 5-6-5 to pixels with alpha 255.
void WidenRun(std::uint8_t *pixels, const std::uint8_t *plane, std::size_t count);

// Pixels to 5-6-5; the alpha is dropped.
void PackRun(std::uint8_t *plane, const std::uint8_t *pixels, std::size_t count);

// Pixels to 5-6-5 of their premultiplied colours.
void PackPremultipliedRun(std::uint8_t *plane, const std::uint8_t *pixels, std::size_t count);

// Pixels to transparency bytes.
void TransparencyRun(std::uint8_t *target, const std::uint8_t *pixels, std::size_t count);

} // namespace wb
