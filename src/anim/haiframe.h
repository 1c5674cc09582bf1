// The frames of a HAI: indexed pictures (gfx/framebuf.h), each with a palette of its own.
#pragma once

#include "gfx/framebuf.h"

namespace wb
{

bool IsIndexed(const FrameBuf &picture);

// A 32-bit picture scaled to 128 x 128 pixels; the second one also reduces it to 256 colours. Empty when
// there is no picture.
FrameBuf ScaledToHai(FrameBuf picture);
FrameBuf MakeHaiFrame(FrameBuf picture);

// An indexed picture of any size as a 32-bit one. Entries that its palette lacks are fully transparent.
// Empty when there is no indexed picture.
FrameBuf ExpandIndexed(const FrameBuf &indexed);

} // namespace wb
