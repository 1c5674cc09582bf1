// What the readers of animations for the viewer have in common: frames come one by one, with events between
// them, until they are aborted or memory ends.
#pragma once

#include "common/memorybudget.h"
#include "common/progress.h"
#include "gfx/frameset.h"
#include "services/abortflag.h"

#include <cstdint>
#include <functional>

namespace wb
{

struct AnimViewing {
    bool AltMethod = false;       // of a GAI: frames that want a background pile up where none is given
    Progress *Bar = nullptr;      // shows the frames read, when there are several
    AbortFlag *Abort = nullptr;   // asked before each frame; cleared at the end
    std::int64_t MemoryLimit = 0; // bytes of all frames together; 0: half of the machine's free memory
};

// What a frame takes beside its pixels, in bytes: its record, its name, and its lines in lists.
inline constexpr std::int64_t FrameCost = 512;

// Makes a document of `count` frames; an empty one of none. `readFrame` puts the picture of the frame into
// the document, or gives false when memory does not hold it, which ends reading as an abort does: the
// document's Count then says how many were read, and LeftOut, after no abort, how many were not.
FrameSet ReadFrames(const char *kind, std::int32_t count, const AnimViewing &viewing,
                    const std::function<bool(FrameSet &, std::int32_t)> &readFrame);

} // namespace wb
