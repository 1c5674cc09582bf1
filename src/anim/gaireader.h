// Reads GAI animations (gaiformat.h). Whatever the file says: nothing outside its bytes is read, and what it
// cannot hold is left out.
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

// Opens an animation for viewing: each frame is drawn onto `canvas` and becomes a picture of it. `canvas` is
// empty or holds the background picture, and holds the last frame afterwards. When reading is aborted, or
// reaches the limit of memory, the document has the frames read so far. Bytes that are no GAI, a GAI without
// frames and one whose box has no pixels, or more than 268,435,456, give an empty document.
FrameSet OpenGaiDocument(ByteView file, FrameBuf &canvas, const AnimViewing &viewing);

// An animation as it is edited: every frame covers the whole box.
struct GaiContents {
    std::vector<FrameBuf> Frames;
    std::int32_t StartX = 0;
    std::int32_t StartY = 0;
    std::int32_t Width = 0;
    std::int32_t Height = 0;
    std::int32_t Background = 0; // the flag as stored
    std::int32_t LeftOut = 0;    // frames that memory does not suffice for
};

// Gives the number of frames, and replaces `contents`; 0 with `contents` unchanged when the bytes are no GAI.
// A box without pixels, or with more than 268,435,456, holds no frames; a negative size reads as 0. Frames
// beyond the limit of memory, which is as above, are left out, and so are those after which `afterFrame`,
// called with the number of frames read and of all, gives false.
std::int32_t ReadGaiProject(ByteView file, GaiContents &contents, const GoOn &afterFrame = {},
                            std::int64_t memoryLimit = 0);

} // namespace wb
