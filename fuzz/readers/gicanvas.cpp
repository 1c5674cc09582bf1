// A GI that lies anywhere in a buffer and is drawn onto a canvas that lies anywhere.
#include "fuzz/support/input.h"
#include "fuzz/support/target.h"

#include "gfx/pixels.h"
#include "gi/gidecoder.h"

void wb::FuzzOne(ByteView bytes)
{
    FuzzInput input(bytes);
    FrameBuf canvas;
    canvas.X = input.Long();
    canvas.Y = input.Long();
    canvas.Width = 1 + input.Byte();
    canvas.Height = 1 + input.Byte();
    canvas.Pixels.assign(std::size_t(canvas.Width) * std::size_t(canvas.Height) * 4, 0);
    const std::int32_t width = canvas.Width;
    auto offset = std::int32_t(input.Byte()) - 4;
    DecodeGi(canvas, input.Take(std::int64_t(bytes.size())), offset);
    Require(HoldsPicture(canvas) && canvas.Width == width, "a canvas keeps its size");
}
