// The run-coded rows of GI layers and font glyphs: the one place that knows the layout.
//
// A layer's data:
//
//   offset  bytes
//        0      4  bytes of coded rows
//        4      4  width
//        8      4  height
//       12      4  0
//       16      -  indexed layers only: the palette, 256 entries of 2 bytes (5-6-5) or 4 bytes (5-6-5, transparency, 0)
//        -      -  the coded rows, top row first
//
// A row is the single byte 0x80 (nothing visible), or control bytes ended by 0x00:
//   0x01..0x7F  skip that many pixels
//   0x81..0xFF  (byte - 0x80) coded pixels follow
//
// A coded pixel is 2 bytes (premultiplied 5-6-5, low byte first) or 1 (transparency 0..63, or a palette index).
#pragma once

#include <cstdint>

namespace wb::rowrle
{

inline constexpr int HeaderSize = 16;
inline constexpr int MaxRun = 127;
inline constexpr std::uint8_t RowEnd = 0x00;
inline constexpr std::uint8_t EmptyRow = 0x80;

constexpr bool IsSkip(std::uint8_t control) { return control > RowEnd && control < EmptyRow; }
constexpr bool IsRun(std::uint8_t control) { return control > EmptyRow; }
constexpr int RunLength(std::uint8_t control) { return control - EmptyRow; }
constexpr std::uint8_t RunControl(int length) { return static_cast<std::uint8_t>(EmptyRow + length); }

} // namespace wb::rowrle
