// Runs of pixels between 32 bits and 5-6-5, many at a time: what the layer drawing, the plane conversions and
// the run coder share. Pixels are B, G, R, A; 5-6-5 values are little-endian; nothing need be aligned.
#pragma once

#include "rastgl/color565.h"

#include <bit>
#include <cstddef>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

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

// Calls `eight` for pixels [i, i + 8) and `one` for single ones. A last part of less than eight is done with
// the seven or fewer before it once more, which the targets must bear: they get the same values again.
template <typename Eight, typename One>
inline void ForEachEight(std::size_t count, Eight eight, One one)
{
    if (count < 8) {
        for (std::size_t i = 0; i < count; i++)
            one(i);
        return;
    }
    std::size_t i = 0;
    for (; i + 8 <= count; i += 8)
        eight(i);
    if (i != count)
        eight(count - 8);
}

#if defined(__SSE2__)

inline __m128i LoadVector(const std::uint8_t *place)
{
    return _mm_loadu_si128(reinterpret_cast<const __m128i *>(place));
}

inline void StoreVector(std::uint8_t *place, __m128i value)
{
    _mm_storeu_si128(reinterpret_cast<__m128i *>(place), value);
}

// The channels of eight pixels, 16 bits each.
struct Channels {
    __m128i b, g, r, a;
};

inline Channels LoadChannels(const std::uint8_t *pixels)
{
    const __m128i first = LoadVector(pixels);
    const __m128i second = LoadVector(pixels + 16);
    // Sign extension keeps the signed packing from saturating.
    const __m128i gb = _mm_packs_epi32(_mm_srai_epi32(_mm_slli_epi32(first, 16), 16),
                                       _mm_srai_epi32(_mm_slli_epi32(second, 16), 16));
    const __m128i ar = _mm_packs_epi32(_mm_srai_epi32(first, 16), _mm_srai_epi32(second, 16));
    const __m128i low = _mm_set1_epi16(255);
    return {_mm_and_si128(gb, low), _mm_srli_epi16(gb, 8), _mm_and_si128(ar, low), _mm_srli_epi16(ar, 8)};
}

// (c + 1) * levels div 255 as a multiplication: factor is levels * 65536 / 255 rounded up.
inline __m128i ReduceChannel(__m128i channel, std::uint16_t factor)
{
    return _mm_mulhi_epu16(_mm_add_epi16(channel, _mm_set1_epi16(1)),
                           _mm_set1_epi16(static_cast<short>(factor)));
}

inline __m128i PackChannels(const Channels &c)
{
    const __m128i r = _mm_slli_epi16(ReduceChannel(c.r, 7968), 11);
    const __m128i g = _mm_slli_epi16(ReduceChannel(c.g, 16192), 5);
    return _mm_or_si128(_mm_or_si128(r, g), ReduceChannel(c.b, 7968));
}

// c * a / 255 to the nearest: (x + 128) * 257 / 65536 is exact for every product of two bytes.
inline __m128i PremultiplyChannel(__m128i channel, __m128i alpha)
{
    const __m128i product = _mm_add_epi16(_mm_mullo_epi16(channel, alpha), _mm_set1_epi16(128));
    return _mm_mulhi_epu16(product, _mm_set1_epi16(257));
}

inline void PackEight(std::uint8_t *plane, const std::uint8_t *pixels)
{
    StoreVector(plane, PackChannels(LoadChannels(pixels)));
}

inline void PackPremultipliedEight(std::uint8_t *plane, const std::uint8_t *pixels)
{
    Channels c = LoadChannels(pixels);
    c.b = PremultiplyChannel(c.b, c.a);
    c.g = PremultiplyChannel(c.g, c.a);
    c.r = PremultiplyChannel(c.r, c.a);
    StoreVector(plane, PackChannels(c));
}

// Repeating the high bits below is value * 33 / 4 (five bits) and value * 65 / 16 (six bits); the factors do
// that to a value that still stands at its place in the 16 bits.
inline void WidenEight(std::uint8_t *pixels, const std::uint8_t *plane)
{
    const __m128i value = LoadVector(plane);
    const __m128i five = _mm_set1_epi16(264);
    const __m128i red = _mm_set1_epi16(static_cast<short>(0xF800));
    const __m128i r = _mm_mulhi_epu16(_mm_and_si128(value, red), five);
    const __m128i g = _mm_mulhi_epu16(_mm_and_si128(value, _mm_set1_epi16(0x07E0)), _mm_set1_epi16(8320));
    const __m128i b = _mm_mulhi_epu16(_mm_slli_epi16(value, 11), five);
    const __m128i gb = _mm_or_si128(_mm_slli_epi16(g, 8), b);
    const __m128i ar = _mm_or_si128(r, _mm_set1_epi16(static_cast<short>(0xFF00)));
    StoreVector(pixels, _mm_unpacklo_epi16(gb, ar));
    StoreVector(pixels + 16, _mm_unpackhi_epi16(gb, ar));
}

#else

inline void PackEight(std::uint8_t *plane, const std::uint8_t *pixels)
{
    for (std::size_t i = 0; i < 8; i++)
        Store16(plane + i * 2, PackPixel(Load32(pixels + i * 4)));
}

inline void PackPremultipliedEight(std::uint8_t *plane, const std::uint8_t *pixels)
{
    for (std::size_t i = 0; i < 8; i++)
        Store16(plane + i * 2, PackPremultipliedPixel(Load32(pixels + i * 4)));
}

inline void WidenEight(std::uint8_t *pixels, const std::uint8_t *plane)
{
    for (std::size_t i = 0; i < 8; i++)
        Store32(pixels + i * 4, Widen565(Load16(plane + i * 2)));
}

#endif

// 5-6-5 to pixels with alpha 255.
inline void WidenRun(std::uint8_t *pixels, const std::uint8_t *plane, std::size_t count)
{
    ForEachEight(
        count, [=](std::size_t i) { WidenEight(pixels + i * 4, plane + i * 2); },
        [=](std::size_t i) { Store32(pixels + i * 4, Widen565(Load16(plane + i * 2))); });
}

// Pixels to 5-6-5; the alpha is dropped.
inline void PackRun(std::uint8_t *plane, const std::uint8_t *pixels, std::size_t count)
{
    ForEachEight(
        count, [=](std::size_t i) { PackEight(plane + i * 2, pixels + i * 4); },
        [=](std::size_t i) { Store16(plane + i * 2, PackPixel(Load32(pixels + i * 4))); });
}

// Pixels to 5-6-5 of their premultiplied colours.
inline void PackPremultipliedRun(std::uint8_t *plane, const std::uint8_t *pixels, std::size_t count)
{
    ForEachEight(
        count, [=](std::size_t i) { PackPremultipliedEight(plane + i * 2, pixels + i * 4); },
        [=](std::size_t i) { Store16(plane + i * 2, PackPremultipliedPixel(Load32(pixels + i * 4))); });
}

// Pixels to transparency bytes.
inline void TransparencyRun(std::uint8_t *target, const std::uint8_t *pixels, std::size_t count)
{
    for (std::size_t i = 0; i < count; i++)
        target[i] = InvAlpha6(pixels[i * 4 + 3]);
}

} // namespace wb
