// Codes rows of pixels as runs; rastgl/rowrle.h gives the layout.
#pragma once

#include "gi/pixelmask.h"
#include "rastgl/rowrle.h"

#include <algorithm>

namespace wb
{

// What a coded row of that many pixels takes at most. A run costs its pixels and a control byte for each 127
// begun; a run that follows another has a skip of at least one pixel before it, which costs less than that
// pixel would.
constexpr std::size_t MaxRowBytes(std::int32_t width)
{
    return std::size_t(width) * 2 + std::size_t(width) / rowrle::MaxRun + 3;
}

// Codes the pixels of the columns [begin, end) that are set; put(target, x, count) writes the coded pixels of
// a run. Gives the end of what was written.
template <int PixelBytes, typename Put>
std::uint8_t *CodeRow(std::uint8_t *out, const std::uint64_t *row, std::int32_t begin, std::int32_t end,
                      Put put)
{
    std::int32_t start = FindPixel<true>(row, begin, end);
    if (start == end) {
        *out++ = rowrle::EmptyRow;
        return out;
    }
    for (std::int32_t x = begin; x != end; start = FindPixel<true>(row, x, end)) {
        while (x < start) {
            const std::int32_t count = std::min(start - x, rowrle::MaxRun);
            *out++ = static_cast<std::uint8_t>(count);
            x += count;
        }
        const std::int32_t finish = FindPixel<false>(row, start, end);
        while (x < finish) {
            const std::int32_t count = std::min(finish - x, rowrle::MaxRun);
            *out++ = rowrle::RunControl(count);
            put(out, x, static_cast<std::size_t>(count));
            out += count * PixelBytes;
            x += count;
        }
    }
    *out++ = rowrle::RowEnd;
    return out;
}

} // namespace wb
