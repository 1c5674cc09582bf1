#include "fuzz/support/target.h"

#include "gfx/pixels.h"
#include "gi/aftreader.h"

#include <algorithm>

void wb::FuzzOne(ByteView bytes)
{
    const std::vector<FrameBuf> frames = ReadAftFrames(bytes, 0x3366CC);
    Require(std::ranges::all_of(
                frames, [](const FrameBuf &frame) { return frame.Pixels.empty() || HoldsPicture(frame); }),
            "a glyph has as many bytes as its size says");
}
