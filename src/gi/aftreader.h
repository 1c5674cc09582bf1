// Reads AFT bitmap fonts.
#pragma once

#include "gfx/framebuf.h"
#include "gfx/frameset.h"

#include <cstdint>
#include <vector>

namespace wb
{

// The pictures of a font: first all glyphs side by side, then one picture a glyph, drawn in `colour` (red in
// the low byte, then green, then blue). None when there is no glyph.
//
// There are as many glyphs as the file has whole records, however many it claims, but no more than 65,536.
// What is damaged is left out: a bitmap that does not lie inside the file, and pixels outside the glyph's
// cell. A cell without pixels gives an empty picture. So does one by which the cells together would be out of
// proportion to the file: above 2048 * 2048 pixels and 64 more for each of its bytes. Bitmaps that lie one
// upon another are read until they come to 16 times the file.
std::vector<FrameBuf> ReadAftFrames(ByteView buffer, std::int32_t colour);

// The same as a document.
FrameSet OpenAftDocument(ByteView buffer, std::int32_t colour);

} // namespace wb
