// One picture in memory, with its place on a canvas.
#pragma once

#include "common/bytearray.h"

#include <cstdint>
#include <string>

namespace wb
{

// Pictures above this many pixels are never allocated: they are read as empty.
inline constexpr std::int64_t MaxPicturePixels = 268'435'456;

// A 32-bit picture holds Width * Height * 4 bytes in `Pixels`: B, G, R, A, alpha not premultiplied, bottom
// row first, no padding. An indexed picture holds Width * Height index bytes, top row first, and its colours
// in `Palette`: 256 entries R, G, B, A, or as many as the file had that it comes from. A picture whose Width
// or Height is 0 is empty and has no pixels.
struct FrameBuf {
    std::int32_t X = 0; // left edge on the canvas
    std::int32_t Y = 0; // top edge on the canvas
    std::int32_t Width = 0;
    std::int32_t Height = 0;
    ByteArray Pixels;
    std::string Kind;           // "GI" for a decoded GI, else empty
    std::int32_t GiType = 0;    // of a decoded GI, as its header says: 0..6, or what no type has
    std::int32_t TransType = 0; // 0 opaque, 1 on/off transparency, 2 graded alpha
    std::int32_t Delay = 0;     // display time of an animation frame
    ByteArray Palette;
    std::int32_t PaletteSize = 0; // bytes in Palette; 0 for a 32-bit picture
};

} // namespace wb
