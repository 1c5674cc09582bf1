// Indexed pictures come back as they were written.
#include "fuzz/support/input.h"
#include "fuzz/support/target.h"

#include "anim/haireader.h"
#include "anim/haiwriter.h"

void wb::FuzzOne(ByteView bytes)
{
    constexpr std::int32_t Side = 128;
    constexpr std::int32_t PaletteBytes = 1024;

    FuzzInput input(bytes);
    std::vector<FrameBuf> frames;
    while (frames.size() < 3 && !input.IsAtEnd()) {
        FrameBuf &frame = frames.emplace_back();
        frame.Width = frame.Height = Side;
        frame.PaletteSize = PaletteBytes;
        frame.Pixels.assign(std::size_t(Side) * Side, 0);
        frame.Palette.assign(PaletteBytes, 0);
        std::ranges::copy(input.Take(std::int64_t(Side) * Side), frame.Pixels.begin());
        std::ranges::copy(input.Take(PaletteBytes), frame.Palette.begin());
    }
    std::vector<FrameBuf> read;
    Require(ReadHaiProject(WriteHai(frames), read) == std::int32_t(frames.size()), "every frame is there");
    for (std::size_t i = 0; i < frames.size(); ++i)
        Require(read[i].Pixels == frames[i].Pixels && read[i].Palette == frames[i].Palette,
                "a frame comes back");
}
