// Operations on whole buffers of pixels: splitting into layers, turning, clipping, bounds, differences.
#include "rastgl/rastgl.h"

#include "rastgl/rows565.h"

#include <algorithm>

namespace
{

using wb::Load32;
using wb::Store32;

// target = the pixels of source whose alpha the test takes, else 0.
template <typename Belongs>
void CopyClass(std::uint8_t *target, const std::int32_t *targetBytes, const std::uint8_t *source,
               const std::int32_t *sourceBytes, Belongs belongs)
{
    const std::int64_t bytes = std::min(*targetBytes, *sourceBytes);
    for (std::int64_t i = 0; i + 4 <= bytes; i += 4) {
        const std::uint32_t pixel = Load32(source + i);
        Store32(target + i, belongs(pixel >> 24) ? pixel : 0);
    }
}

bool IsPartly(std::uint32_t alpha)
{
    return alpha - 1 < 254;
}

// A buffer of rows that are counted from the top of the picture.
struct Rows {
    const std::uint8_t *pixels;
    std::int64_t width;
    std::int64_t height;
    bool topFirst;

    std::int64_t Offset(std::int64_t row) const { return (topFirst ? row : height - 1 - row) * width * 4; }
    const std::uint8_t *Row(std::int64_t row) const { return pixels + Offset(row); }
};

// Along one axis: cuts [target, target + length) and the source's span to what both hold.
struct Span {
    std::int64_t target;
    std::int64_t source;
    std::int64_t length;

    Span(std::int64_t targetStart, std::int64_t targetSize, std::int64_t sourceStart, std::int64_t sourceSize)
    {
        const std::int64_t cut = std::max<std::int64_t>({0, -targetStart, -sourceStart});
        target = targetStart + cut;
        source = sourceStart + cut;
        length = std::min(targetSize - target, sourceSize - source);
    }
};

void CopyClip(std::uint8_t *target, const std::int32_t *targetX, const std::int32_t *targetY,
              const Rows &targetRows, const std::int32_t *sourceX, const std::int32_t *sourceY,
              const Rows &sourceRows)
{
    const Span columns(*targetX, targetRows.width, *sourceX, sourceRows.width);
    const Span lines(*targetY, targetRows.height, *sourceY, sourceRows.height);
    if (columns.length <= 0)
        return;
    for (std::int64_t i = 0; i < lines.length; i++)
        std::memcpy(target + targetRows.Offset(lines.target + i) + columns.target * 4,
                    sourceRows.Row(lines.source + i) + columns.source * 4, std::size_t(columns.length) * 4);
}

// The first visible column before `limit`, or `limit`.
std::int64_t FirstVisible(const std::uint8_t *row, std::int64_t limit)
{
    std::int64_t x = 0;
    while (x < limit && row[x * 4 + 3] == 0)
        x++;
    return x;
}

// One past the last visible column from `start` on, or `start`.
std::int64_t FinishVisible(const std::uint8_t *row, std::int64_t start, std::int64_t width)
{
    std::int64_t x = width;
    while (x > start && row[x * 4 - 1] == 0)
        x--;
    return x;
}

bool IsVisible(const std::uint8_t *row, std::int64_t width)
{
    // By blocks without an early way out, which the compiler turns into vectors.
    constexpr std::int64_t Block = 64;
    for (std::int64_t start = 0; start < width; start += Block) {
        const std::int64_t end = std::min(start + Block, width);
        std::uint32_t seen = 0;
        for (std::int64_t x = start; x < end; x++)
            seen |= Load32(row + x * 4);
        if (seen >> 24 != 0)
            return true;
    }
    return false;
}

Rows PictureRows(const std::uint8_t *pixels, const std::int32_t *width, const std::int32_t *height)
{
    return {pixels, std::max(*width, 0), std::max(*height, 0), false};
}

} // namespace

void VTGF_TransBuf_Copy_32(uint8_t *target, const int32_t *targetBytes, const uint8_t *source,
                           const int32_t *sourceBytes)
{
    CopyClass(target, targetBytes, source, sourceBytes, [](std::uint32_t alpha) { return alpha == 255; });
}

void VTGF_TransAlphaBuf_Copy_32(uint8_t *target, const int32_t *targetBytes, const uint8_t *source,
                                const int32_t *sourceBytes)
{
    CopyClass(target, targetBytes, source, sourceBytes, IsPartly);
}

void VTGF_AlphaBuf_Copy_32(uint8_t *target, const int32_t *targetBytes, const uint8_t *source,
                           const int32_t *sourceBytes)
{
    CopyClass(target, targetBytes, source, sourceBytes, IsPartly);
}

void VTGF_VFlipBuf_Copy_32(uint8_t *target, const uint8_t *source, const int32_t *width,
                           const int32_t *height)
{
    const std::int32_t zero = 0;
    CopyClip(target, &zero, &zero, PictureRows(target, width, height), &zero, &zero,
             {source, *width, *height, true});
}

void VTGF_CopyClip_32(uint8_t *target, const int32_t *targetX, const int32_t *targetY,
                      const int32_t *targetWidth, const int32_t *targetHeight, const uint8_t *source,
                      const int32_t *sourceX, const int32_t *sourceY, const int32_t *sourceWidth,
                      const int32_t *sourceHeight)
{
    CopyClip(target, targetX, targetY, PictureRows(target, targetWidth, targetHeight), sourceX, sourceY,
             PictureRows(source, sourceWidth, sourceHeight));
}

void VTGF_CopyClip_Flip_32(uint8_t *target, const int32_t *targetX, const int32_t *targetY,
                           const int32_t *targetWidth, const int32_t *targetHeight, const uint8_t *source,
                           const int32_t *sourceX, const int32_t *sourceY, const int32_t *sourceWidth,
                           const int32_t *sourceHeight)
{
    CopyClip(target, targetX, targetY, PictureRows(target, targetWidth, targetHeight), sourceX, sourceY,
             {source, *sourceWidth, *sourceHeight, true});
}

int32_t VTGF_GetStartX_32(const uint8_t *pixels, const int32_t *width, const int32_t *height)
{
    const Rows rows = PictureRows(pixels, width, height);
    std::int64_t start = rows.width;
    for (std::int64_t y = 0; y < rows.height; y++)
        start = FirstVisible(rows.Row(y), start);
    return start == rows.width ? 0 : static_cast<std::int32_t>(start);
}

int32_t VTGF_GetFinishX_32(const uint8_t *pixels, const int32_t *width, const int32_t *height)
{
    const Rows rows = PictureRows(pixels, width, height);
    std::int64_t finish = 0;
    for (std::int64_t y = 0; y < rows.height; y++)
        finish = FinishVisible(rows.Row(y), finish, rows.width);
    return static_cast<std::int32_t>(finish);
}

int32_t VTGF_GetStartY_32(const uint8_t *pixels, const int32_t *width, const int32_t *height)
{
    const Rows rows = PictureRows(pixels, width, height);
    for (std::int64_t y = 0; y < rows.height; y++)
        if (IsVisible(rows.Row(y), rows.width))
            return static_cast<std::int32_t>(y);
    return 0;
}

int32_t VTGF_GetFinishY_32(const uint8_t *pixels, const int32_t *width, const int32_t *height)
{
    const Rows rows = PictureRows(pixels, width, height);
    for (std::int64_t y = rows.height; y > 0; y--)
        if (IsVisible(rows.Row(y - 1), rows.width))
            return static_cast<std::int32_t>(y);
    return 0;
}

int32_t VTGF_AnimFrame_Build_32(uint8_t *target, const uint8_t *previous, const uint8_t *current,
                                const int32_t *width, const int32_t *height)
{
    const std::int64_t pixels = std::int64_t(std::max(*width, 0)) * std::max(*height, 0);
    std::int32_t unshown = 0;
    for (std::int64_t i = 0; i < pixels * 4; i += 4) {
        const std::uint32_t before = Load32(previous + i);
        const std::uint32_t now = Load32(current + i);
        const bool same = before == now || ((before | now) >> 24) == 0;
        Store32(target + i, same ? 0 : now);
        // Without a branch, so that the compiler turns the loop into vectors.
        unshown +=
            std::int32_t(before != now) & std::int32_t(before >> 24 != 0) & std::int32_t(now >> 24 != 255);
    }
    return unshown;
}
