// What a GI holds of a picture is written again without a change.
#include "fuzz/support/input.h"
#include "fuzz/support/target.h"

#include "gfx/pixels.h"
#include "gi/gidecoder.h"
#include "gi/giencoder.h"
#include "gi/giformat.h"

namespace wb
{

namespace
{

FrameBuf WrittenAndRead(const FrameBuf &picture, std::int32_t type, bool crop)
{
    ByteArray bytes;
    FrameBuf read;
    std::int32_t offset = 0;
    if (EncodeGi(bytes, picture, type, TransTypeOf(picture.Pixels), crop) > 0)
        DecodeGi(read, bytes, offset);
    return read;
}

} // namespace

void FuzzOne(ByteView bytes)
{
    FuzzInput input(bytes);
    const std::int32_t type = input.Byte() % 5;
    const bool crop = input.Flag();
    FrameBuf picture = input.Picture(40, input.Byte() % 3);
    picture.X = input.Number(9999);
    picture.Y = input.Number(9999);
    if (!GiTypeAllowed(type, TransTypeOf(picture.Pixels)))
        return;
    const FrameBuf once = WrittenAndRead(picture, type, crop);
    Require(HoldsPicture(once) && once.Width == picture.Width && once.Height == picture.Height,
            "a picture keeps its size");
    if (GiTypeAllowed(type, TransTypeOf(once.Pixels)))
        Require(WrittenAndRead(once, type, crop).Pixels == once.Pixels, "what was read is written so again");
}

} // namespace wb
