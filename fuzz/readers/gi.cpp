#include "fuzz/support/target.h"

#include "gfx/pixels.h"
#include "gi/gidecoder.h"

void wb::FuzzOne(ByteView bytes)
{
    FrameBuf picture;
    std::int32_t offset = 0;
    DecodeGi(picture, bytes, offset);
    Require(picture.Pixels.empty() || HoldsPicture(picture), "a picture has as many bytes as its size says");
}
