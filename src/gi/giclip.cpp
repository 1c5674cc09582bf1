#include "gi/giclip.h"

#include "rastgl/rowrle.h"

#include <algorithm>
#include <cstring>

namespace wb
{

namespace
{

std::uint8_t *PutSkips(std::uint8_t *at, std::int64_t pixels)
{
    for (; pixels > 0; pixels -= rowrle::MaxRun)
        *at++ = static_cast<std::uint8_t>(std::min<std::int64_t>(pixels, rowrle::MaxRun));
    return at;
}

} // namespace

template <int PixelBytes>
ByteArray ClipLayer(ByteView layer, std::size_t paletteBytes, const LayerPart &part)
{
    const std::size_t rowsStart = rowrle::HeaderSize + paletteBytes;
    const rowrle::LayerHeader header = rowrle::GetHeader(layer.data());
    const std::uint8_t *at = layer.data() + rowsStart;
    const std::uint8_t *const end = at + std::min<std::size_t>(header.rowBytes, layer.size() - rowsStart);

    // A row that breaks off at the end of the bytes gains an end byte.
    ByteArray clipped(layer.size() + 1);
    std::memcpy(clipped.data(), layer.data(), rowsStart);
    std::uint8_t *out = clipped.data() + rowsStart;
    const std::int64_t right = part.Left + part.Width;
    std::int64_t y = 0;
    for (; y < part.Top + part.Height && at != end; y++) {
        std::int64_t reached = part.Left;
        std::uint8_t *const rowStart = out;
        at = rowrle::ReadRow<PixelBytes>(
            at, end, header.width, [&](std::size_t x, std::size_t count, const std::uint8_t *pixels) {
                const std::int64_t first = std::max<std::int64_t>(std::int64_t(x), part.Left);
                const std::int64_t last = std::min<std::int64_t>(std::int64_t(x + count), right);
                if (y < part.Top || first >= last)
                    return;
                out = PutSkips(out, first - reached);
                *out++ = rowrle::RunControl(static_cast<int>(last - first));
                const std::size_t bytes = std::size_t(last - first) * PixelBytes;
                std::memcpy(out, pixels + (first - std::int64_t(x)) * PixelBytes, bytes);
                out += bytes;
                reached = last;
            });
        if (y < part.Top)
            continue;
        const bool empty = out == rowStart;
        *out++ = empty ? rowrle::EmptyRow : rowrle::RowEnd;
    }

    const std::int64_t rows = std::max<std::int64_t>(y - part.Top, 0);
    const std::int64_t rowBytes = out - (clipped.data() + rowsStart);
    rowrle::PutHeader(clipped.data(),
                      {static_cast<std::uint32_t>(rowBytes), static_cast<std::uint32_t>(part.Width),
                       static_cast<std::uint32_t>(rows)});
    clipped.resize(rowsStart + std::size_t(rowBytes));
    return clipped;
}

template ByteArray ClipLayer<1>(ByteView, std::size_t, const LayerPart &);
template ByteArray ClipLayer<2>(ByteView, std::size_t, const LayerPart &);

} // namespace wb
