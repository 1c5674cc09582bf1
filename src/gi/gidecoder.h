// Reads GI pictures.
#pragma once

#include "gfx/framebuf.h"

#include <cstdint>

namespace wb
{

// Decodes the GI that starts at `offset` of the buffer, which is not moved.
//
// A picture whose Width or Height is 0 takes the GI's size, its pixels become zero where the GI draws
// nothing, and the capacity of its Pixels is kept; X and Y become the GI's place, but not for type 4. Any
// other picture is a canvas whose first pixel lies at its X and Y: the GI is drawn onto it, its size and
// place stay. Type 4 fills a canvas of its own size wherever that lies.
//
// Sets Kind and GiType; a buffer without a GI there changes nothing. What is damaged is left out: a layer
// whose data does not lie inside the buffer, rows that break off, all that would lie outside the picture.
// Type 0 draws nothing of a layer that begins left of or above the canvas. Types 5 and 6 have no known
// layout: their pictures have a size and nothing drawn.
//
// A size that is negative, or above MaxPicturePixels, gives an empty picture, and so does one out of
// proportion to the buffer: above 4096 * 4096 pixels and 4096 more for each of its bytes from the offset on.
// That bound leaves room for a cropped figure of 100 x 100 pixels on a canvas of 8192 x 8192.
void DecodeGi(FrameBuf &picture, ByteView buffer, std::int32_t &offset);

} // namespace wb
