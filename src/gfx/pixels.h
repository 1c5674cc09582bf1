// What the formats and pages share around pictures in memory. Pack565, BlendOver and InvAlpha6, the
// arithmetic of single pixels, and TransTypeOf come with it.
#pragma once

#include "gfx/framebuf.h"
#include "rastgl/colour565.h"
#include "rastgl/transtype.h"

#include <cstdint>

namespace wb
{

// The bytes of a 32-bit picture of this size; 0 for an empty one and for one that is never allocated.
std::int64_t PictureBytes(std::int64_t width, std::int64_t height);

// True when the picture is not empty and holds as many bytes as its size says.
bool HoldsPicture(const FrameBuf &picture);

// Reverses the order of the rows of a 32-bit picture, in place.
void FlipRows(FrameBuf &picture);

// The picture behind a handle, at (0, 0); an empty one for no picture. The handle stays with the caller.
FrameBuf DibToFrameBuf(std::int32_t handle);

// A new handle that holds a copy of the picture, for the caller to free; 0 for an empty picture.
std::int32_t FrameBufToDib(const FrameBuf &picture);

} // namespace wb
