// An animation of indexed pictures, as the viewer and the editor open it.
#include "fuzz/support/target.h"

#include "anim/haireader.h"

void wb::FuzzOne(ByteView bytes)
{
    const FrameSet document = OpenHaiDocument(bytes, {});
    Require(document.Count >= 0 && std::size_t(document.Count) <= document.Pictures.size(),
            "every frame has its place");
    std::vector<FrameBuf> frames;
    ReadHaiProject(bytes, frames);
    for (const FrameBuf &frame : frames)
        Require(std::int64_t(frame.Pixels.size()) == std::int64_t(frame.Width) * frame.Height &&
                    std::int64_t(frame.Palette.size()) == frame.PaletteSize,
                "a frame has as many bytes as its sizes say");
}
