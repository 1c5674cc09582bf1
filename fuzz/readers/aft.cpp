#include "fuzz/support/target.h"

#include "gfx/pixels.h"
#include "gi/aftreader.h"

void wb::FuzzOne(ByteView bytes)
{
    for (const FrameBuf &frame : ReadAftFrames(bytes, 0))
        Require(frame.Pixels.empty() || HoldsPicture(frame), "a picture has as many bytes as its size says");
}
