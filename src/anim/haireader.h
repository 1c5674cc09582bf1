// Reads HAI animations (haiformat.h). Whatever the file says: nothing outside its bytes is read, and what a
// frame has beyond their end is zero.
#pragma once

#include "anim/animviewing.h"
#include "anim/framejob.h"
#include "common/bytearray.h"
#include "gfx/framebuf.h"
#include "gfx/frameset.h"

#include <cstdint>
#include <vector>

namespace wb
{

// Both readers take as many frames as the header says, also those that a file cut short has no more, but
// never more than it has bytes. All together take no more memory than 64 MiB and 16 times the file, nor than
// half of what the machine has free; frames beyond that are left out.

// Opens an animation for viewing. A frame that begins outside the file, or has no size or no palette, has
// picture 0. When reading is aborted the document has the frames read so far.
FrameSet OpenHaiDocument(ByteView file, const AnimViewing &viewing);

// Gives the number of frames, and replaces `frames` by them: indexed pictures of the size and with the
// palette that the header says. `frames` has fewer where memory does not suffice for all, and where
// `afterFrame`, called with the number of frames read and of all, gives false. 0 with `frames` unchanged when
// the header says no frames, or some that can't be. `memoryLimit` as in AnimViewing.
std::int32_t ReadHaiProject(ByteView file, std::vector<FrameBuf> &frames, const GoOn &afterFrame = {},
                            std::int64_t memoryLimit = 0);

} // namespace wb
