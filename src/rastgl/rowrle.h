// The run-coded rows of GI layers and font glyphs: the one place that knows the layout.
//
// A layer's data:
//
//   offset  bytes
//        0      4  bytes of coded rows
//        4      4  width
//        8      4  height
//       12      4  0
//       16      -  indexed layers only: the palette, 256 entries of 2 bytes (5-6-5) or of 4 (5-6-5,
//                  transparency, 0)
//        -      -  the coded rows, top row first
//
// A row is the single byte 0x80 (nothing visible), or control bytes ended by 0x00:
//   0x01..0x7F  skip that many pixels
//   0x81..0xFF  (byte - 0x80) coded pixels follow
//
// A coded pixel is 2 bytes (premultiplied 5-6-5, low byte first) or 1 (transparency 0..63, or a palette
// index).
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace wb::rowrle
{

inline constexpr int HeaderSize = 16;
inline constexpr int OpaquePaletteSize = 512; // 256 entries of 5-6-5
inline constexpr int AlphaPaletteSize = 1024; // 256 entries of 5-6-5, transparency, 0
inline constexpr int MaxRun = 127;
inline constexpr std::uint8_t RowEnd = 0x00;
inline constexpr std::uint8_t EmptyRow = 0x80;

constexpr bool IsSkip(std::uint8_t control)
{
    return control > RowEnd && control < EmptyRow;
}
constexpr bool IsRun(std::uint8_t control)
{
    return control > EmptyRow;
}
constexpr int RunLength(std::uint8_t control)
{
    return control - EmptyRow;
}
constexpr std::uint8_t RunControl(int length)
{
    return static_cast<std::uint8_t>(EmptyRow + length);
}

struct LayerHeader {
    std::uint32_t rowBytes = 0;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
};

constexpr std::uint32_t GetField(const std::uint8_t *place)
{
    return place[0] | std::uint32_t(place[1]) << 8 | std::uint32_t(place[2]) << 16 |
           std::uint32_t(place[3]) << 24;
}

constexpr void PutField(std::uint8_t *place, std::uint32_t value)
{
    for (int i = 0; i < 4; i++)
        place[i] = static_cast<std::uint8_t>(value >> (8 * i));
}

// The header of a layer that holds at least HeaderSize bytes.
constexpr LayerHeader GetHeader(const std::uint8_t *layer)
{
    return {GetField(layer), GetField(layer + 4), GetField(layer + 8)};
}

constexpr void PutHeader(std::uint8_t *layer, const LayerHeader &header)
{
    PutField(layer, header.rowBytes);
    PutField(layer + 4, header.width);
    PutField(layer + 8, header.height);
    PutField(layer + 12, 0);
}

// Reads one row from the bytes [at, end) and gives where the next one begins: `end` when the bytes run out,
// whatever the row lacks then. Calls run(x, count, pixels) for each run of coded pixels from left to right,
// as far as it lies before `width` and inside the bytes; 0x80 amid a row is a run of nothing.
template <int PixelBytes, typename Run>
const std::uint8_t *ReadRow(const std::uint8_t *at, const std::uint8_t *end, std::uint32_t width, Run &&run)
{
    if (at != end && *at == EmptyRow)
        return at + 1;

    std::int64_t x = 0;
    while (at != end) {
        const std::uint8_t control = *at++;
        if (control == RowEnd)
            return at;
        if (IsSkip(control)) {
            x += control;
            continue;
        }
        const std::int64_t held = std::min<std::int64_t>(RunLength(control), (end - at) / PixelBytes);
        const std::int64_t shown = std::min(held, std::int64_t(width) - x);
        if (shown > 0)
            run(static_cast<std::size_t>(x), static_cast<std::size_t>(shown), at);
        if (held < RunLength(control))
            return end;
        at += held * PixelBytes;
        x += held;
    }
    return end;
}

} // namespace wb::rowrle
