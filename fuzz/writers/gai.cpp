// An animation that is written shows, frame by frame, what the GIs of its frames hold.
#include "fuzz/support/input.h"
#include "fuzz/support/target.h"

#include "anim/gaireader.h"
#include "anim/gaiwriter.h"
#include "gfx/pixels.h"
#include "gi/gidecoder.h"
#include "gi/giencoder.h"
#include "gi/giformat.h"

namespace wb
{

namespace
{

std::vector<FrameBuf> TakeFrames(FuzzInput &input, const GaiBox &box)
{
    std::vector<FrameBuf> frames;
    while (frames.size() < 5 && !input.IsAtEnd()) {
        const std::int32_t type = input.Byte() % 5;
        FrameBuf frame = input.Picture(std::min(box.Width, box.Height), input.Byte() % 3);
        frame.X = box.StartX + input.Number(box.Width - frame.Width);
        frame.Y = box.StartY + input.Number(box.Height - frame.Height);
        frame.Delay = input.Long();
        frame.TransType = TransTypeOf(frame.Pixels);
        frame.GiType = GiTypeAllowed(type, frame.TransType) ? type : 0;
        frames.push_back(std::move(frame));
    }
    return frames;
}

// The frame's GI alone, on a box without anything else.
ByteArray InBox(const FrameBuf &frame, const GaiBox &box, bool crop)
{
    FrameBuf canvas;
    canvas.X = box.StartX;
    canvas.Y = box.StartY;
    canvas.Width = box.Width;
    canvas.Height = box.Height;
    canvas.Pixels.assign(std::size_t(PictureBytes(box.Width, box.Height)), 0);
    ByteArray bytes;
    std::int32_t offset = 0;
    if (EncodeGi(bytes, frame, frame.GiType, frame.TransType, crop) > 0)
        DecodeGi(canvas, bytes, offset);
    return std::move(canvas.Pixels);
}

} // namespace

void FuzzOne(ByteView bytes)
{
    FuzzInput input(bytes);
    const GaiWriting writing = {.Background = input.Flag(), .Packed = input.Flag(), .Crop = input.Flag()};
    const GaiBox box = {input.Number(999), input.Number(999), 1 + input.Number(63), 1 + input.Number(63)};
    const std::vector<FrameBuf> frames = TakeFrames(input, box);

    GaiContents read;
    ReadGaiProject(WriteGai(box, frames, writing), read);
    Require(read.Frames.size() == frames.size(), "every frame is there");
    Require((read.Background != 0) == writing.Background && read.StartX == box.StartX &&
                read.Width == box.Width && read.Height == box.Height,
            "box and flag come back");
    for (std::size_t i = 0; i < frames.size(); ++i) {
        Require(read.Frames[i].Pixels == InBox(frames[i], box, writing.Crop), "a frame comes back");
        Require(frames.size() == 1 || read.Frames[i].Delay == frames[i].Delay, // one frame's is not kept
                "a delay comes back");
    }
}

} // namespace wb
