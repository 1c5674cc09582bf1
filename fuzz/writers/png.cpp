#include "fuzz/support/input.h"
#include "fuzz/support/scratch.h"
#include "fuzz/support/target.h"

#include "gfx/graphicslibrary.h"
#include "gfx/pixels.h"

void wb::FuzzOne(ByteView bytes)
{
    FuzzInput input(bytes);
    const FrameBuf picture = input.Picture(200, 2);
    const std::string path = Scratch().Native("picture.png");
    const std::int32_t handle = FrameBufToDib(picture);
    Require(Graphics().VTGF_Write_PNG_File(path.c_str(), handle) == 1, "the file is written");
    Graphics().VTGF_DIB_Free(handle);
    const std::int32_t back = Graphics().VTGF_Read_PNG_File(path.c_str());
    Require(DibToFrameBuf(back).Pixels == picture.Pixels, "the file holds the picture");
    Graphics().VTGF_DIB_Free(back);
}
