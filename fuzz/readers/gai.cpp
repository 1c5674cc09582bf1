// An animation as the viewer opens it, over a background and without.
#include "fuzz/support/input.h"
#include "fuzz/support/target.h"

#include "anim/gaireader.h"

void wb::FuzzOne(ByteView bytes)
{
    FuzzInput input(bytes);
    const std::uint8_t kind = input.Byte();
    FrameBuf canvas = (kind & 1) != 0 ? input.Picture(64, 2) : FrameBuf();
    const FrameSet document =
        OpenGaiDocument(input.Take(std::int64_t(bytes.size())), canvas,
                        {.AltMethod = (kind & 2) != 0, .MemoryLimit = std::int64_t(64) << 20});
    Require(document.Count >= 0 && std::size_t(document.Count) <= document.Pictures.size(),
            "every frame has a picture");
}
