// Writes GAI animations (gaiformat.h), and finds what is wrong with one before.
#pragma once

#include "anim/framejob.h"
#include "common/bytearray.h"
#include "gfx/framebuf.h"

#include <QString>

#include <cstdint>
#include <span>

namespace wb
{

// Where an animation lies and how large it is.
struct GaiBox {
    std::int32_t StartX = 0;
    std::int32_t StartY = 0;
    std::int32_t Width = 0;
    std::int32_t Height = 0;

    bool operator==(const GaiBox &) const = default;
};

struct GaiWriting {
    bool Background = false; // the animation is drawn over a background
    bool Packed = false;     // each frame is a ZL block
    bool Crop = false;       // transparent edges are cut off, but for type 4
};

// The file. Each frame is written as its GiType at its place; one that encodes to nothing has no data.
// `afterFrame` is called with the number of frames written and of all; the frames must stay as they are until
// all is done. No bytes when it gives false, and when the file would be longer than 2,147,483,647.
ByteArray WriteGai(const GaiBox &box, std::span<const FrameBuf> frames, const GaiWriting &writing,
                   const GoOn &afterFrame = {});

struct GaiErrors {
    QString Text; // for the log: the frames with their errors, and the number of errors
    std::int32_t Count = 0;
};

// What does not fit into the box, and what can't be written as its type.
GaiErrors CheckGaiProject(const GaiBox &box, std::span<const FrameBuf> frames);

} // namespace wb
