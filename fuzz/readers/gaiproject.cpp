// An animation as the editor opens it.
#include "fuzz/support/target.h"

#include "anim/gaireader.h"
#include "gfx/pixels.h"

#include <algorithm>

void wb::FuzzOne(ByteView bytes)
{
    GaiContents contents;
    ReadGaiProject(bytes, contents, {}, std::int64_t(64) << 20);
    Require(std::ranges::all_of(contents.Frames, HoldsPicture), "every frame covers the box");
}
