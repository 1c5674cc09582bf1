// Sets of pixels of a picture as bits: what the run coder walks instead of the pixels.
#pragma once

#include "gfx/framebuf.h"
#include "gi/giformat.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <vector>

namespace wb
{

// One bit a pixel. Rows count from the top; a row's leftmost pixel is the lowest bit of its first word.
class PixelMask
{
public:
    static constexpr std::int32_t WordBits = 64;

    PixelMask(std::int32_t width, std::int32_t height)
        : m_width(width), m_height(height), m_rowWords((std::size_t(width) + WordBits - 1) / WordBits),
          m_words(m_rowWords * std::size_t(height))
    {
    }

    std::int32_t Width() const { return m_width; }
    std::int32_t Height() const { return m_height; }
    std::uint64_t *Row(std::int32_t y) { return m_words.data() + m_rowWords * std::size_t(y); }
    const std::uint64_t *Row(std::int32_t y) const { return m_words.data() + m_rowWords * std::size_t(y); }

    // The smallest rectangle that holds all set pixels; empty when none is set.
    GiRect Bounds() const;
    std::int64_t CountPixels() const;

private:
    std::int32_t m_width;
    std::int32_t m_height;
    std::size_t m_rowWords;
    std::vector<std::uint64_t> m_words;
};

// The first pixel from x on that is set (or not set), or `end`.
template <bool Set>
std::int32_t FindPixel(const std::uint64_t *row, std::int32_t x, std::int32_t end)
{
    while (x < end) {
        const std::uint64_t word = Set ? row[x / PixelMask::WordBits] : ~row[x / PixelMask::WordBits];
        const std::uint64_t rest = word >> (x % PixelMask::WordBits);
        if (rest != 0)
            return std::min(x + std::countr_zero(rest), end);
        x = (x / PixelMask::WordBits + 1) * PixelMask::WordBits;
    }
    return end;
}

// The pixels of a GI's first layer (alpha 255) and those of its other two (alpha 1 to 254). The picture is
// not empty.
struct PixelClasses {
    PixelMask Opaque;
    PixelMask Partly;
};
PixelClasses Classify(const FrameBuf &picture);

// The pixels whose index is not 0; rows top row first.
PixelMask MaskOfIndexes(const std::uint8_t *indexes, std::int32_t width, std::int32_t height);

} // namespace wb
