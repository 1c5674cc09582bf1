// Writes HAI animations (haiformat.h).
#pragma once

#include "anim/framejob.h"
#include "common/bytearray.h"
#include "gfx/framebuf.h"

#include <span>

namespace wb
{

// The file of these indexed pictures. Of a picture that is larger than 128 x 128 it has the top left part;
// what a smaller picture or palette lacks is zero. `afterFrame` is called with the number of frames written
// and of all; the frames must stay as they are until all is done. No bytes when it gives false, and when the
// file would be longer than 2,147,483,647.
ByteArray WriteHai(std::span<const FrameBuf> frames, const GoOn &afterFrame = {});

} // namespace wb
