#include "gi/pixelmask.h"

#include <algorithm>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace wb
{

namespace
{

// Sixteen pixels at a time, a bit each.
constexpr std::int32_t Block = 16;
using BlockBits = std::uint16_t;

struct ClassBits {
    BlockBits opaque = 0;
    BlockBits partly = 0;
};

// `count` pixels, at most a block.
ClassBits ClassifyFew(const std::uint8_t *pixels, std::int32_t count)
{
    ClassBits bits;
    for (std::int32_t i = 0; i < count; i++) {
        const std::uint8_t alpha = pixels[i * 4 + 3];
        bits.opaque |= static_cast<BlockBits>((alpha == 255) << i);
        bits.partly |= static_cast<BlockBits>((alpha != 255 && alpha != 0) << i);
    }
    return bits;
}

BlockBits MaskFew(const std::uint8_t *indexes, std::int32_t count)
{
    BlockBits bits = 0;
    for (std::int32_t i = 0; i < count; i++)
        bits |= static_cast<BlockBits>((indexes[i] != 0) << i);
    return bits;
}

#if defined(__SSE2__)

BlockBits WhereEqual(__m128i bytes, int value)
{
    const __m128i equal = _mm_cmpeq_epi8(bytes, _mm_set1_epi8(static_cast<char>(value)));
    return static_cast<BlockBits>(_mm_movemask_epi8(equal));
}

ClassBits ClassifyBlock(const std::uint8_t *pixels)
{
    const auto alphas = [pixels](int quarter) {
        const auto *place = reinterpret_cast<const __m128i *>(pixels + quarter * 16);
        return _mm_srli_epi32(_mm_loadu_si128(place), 24);
    };
    const __m128i all =
        _mm_packus_epi16(_mm_packs_epi32(alphas(0), alphas(1)), _mm_packs_epi32(alphas(2), alphas(3)));
    const BlockBits opaque = WhereEqual(all, 255);
    return {opaque, static_cast<BlockBits>(~(opaque | WhereEqual(all, 0)))};
}

BlockBits MaskBlock(const std::uint8_t *indexes)
{
    return static_cast<BlockBits>(
        ~WhereEqual(_mm_loadu_si128(reinterpret_cast<const __m128i *>(indexes)), 0));
}

#else

ClassBits ClassifyBlock(const std::uint8_t *pixels)
{
    return ClassifyFew(pixels, Block);
}

BlockBits MaskBlock(const std::uint8_t *indexes)
{
    return MaskFew(indexes, Block);
}

#endif

void SetBlock(std::uint64_t *row, std::int32_t x, BlockBits bits)
{
    row[x / PixelMask::WordBits] |= std::uint64_t(bits) << (x % PixelMask::WordBits);
}

} // namespace

GiRect PixelMask::Bounds() const
{
    GiRect bounds;
    std::vector<std::uint64_t> columns(m_rowWords);
    for (std::int32_t y = 0; y < m_height; y++) {
        std::uint64_t seen = 0;
        for (std::size_t i = 0; i < m_rowWords; i++) {
            columns[i] |= Row(y)[i];
            seen |= Row(y)[i];
        }
        if (seen == 0)
            continue;
        if (bounds.Bottom == 0)
            bounds.Top = y;
        bounds.Bottom = y + 1;
    }
    if (bounds.Bottom == 0)
        return {};

    bounds.Left = FindPixel<true>(columns.data(), 0, m_width);
    std::size_t last = m_rowWords - 1;
    while (columns[last] == 0)
        last--;
    bounds.Right = static_cast<std::int32_t>(last * WordBits) + std::bit_width(columns[last]);
    return bounds;
}

std::int64_t PixelMask::CountPixels() const
{
    std::int64_t count = 0;
    for (const std::uint64_t word : m_words)
        count += std::popcount(word);
    return count;
}

PixelClasses Classify(const FrameBuf &picture)
{
    const std::int32_t width = picture.Width;
    const std::int32_t height = picture.Height;
    PixelClasses classes = {{width, height}, {width, height}};
    for (std::int32_t y = 0; y < height; y++) {
        const std::uint8_t *pixels =
            picture.Pixels.data() + std::size_t(height - 1 - y) * std::size_t(width) * 4;
        std::uint64_t *opaque = classes.Opaque.Row(y);
        std::uint64_t *partly = classes.Partly.Row(y);
        for (std::int32_t x = 0; x < width; x += Block) {
            const std::uint8_t *place = pixels + std::size_t(x) * 4;
            const ClassBits bits = x + Block <= width ? ClassifyBlock(place) : ClassifyFew(place, width - x);
            SetBlock(opaque, x, bits.opaque);
            SetBlock(partly, x, bits.partly);
        }
    }
    return classes;
}

PixelMask MaskOfIndexes(const std::uint8_t *indexes, std::int32_t width, std::int32_t height)
{
    PixelMask mask(width, height);
    for (std::int32_t y = 0; y < height; y++) {
        const std::uint8_t *row = indexes + std::size_t(y) * std::size_t(width);
        for (std::int32_t x = 0; x < width; x += Block)
            SetBlock(mask.Row(y), x, x + Block <= width ? MaskBlock(row + x) : MaskFew(row + x, width - x));
    }
    return mask;
}

} // namespace wb
