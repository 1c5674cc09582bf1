// An animation as the editor opens it.
#include "fuzz/support/gaiparts.h"
#include "fuzz/support/target.h"

#include "anim/gaireader.h"
#include "gfx/pixels.h"

namespace wb
{

std::vector<FilePart> TakeApart(ByteView file, bool expands)
{
    return GaiParts(file, expands);
}

ByteArray PutTogether(const std::vector<FilePart> &parts)
{
    return GaiOf(parts);
}

void FuzzOne(ByteView bytes)
{
    GaiContents contents;
    ReadGaiProject(bytes, contents, {}, std::int64_t(64) << 20);
    Require(std::ranges::all_of(contents.Frames, HoldsPicture), "every frame covers the box");
}

} // namespace wb
