// What JPEG keeps depends on the quality; that much of it comes back always: a picture of that size.
#include "fuzz/support/input.h"
#include "fuzz/support/scratch.h"
#include "fuzz/support/target.h"

#include "common/files.h"
#include "gfx/graphicslibrary.h"
#include "gfx/pixels.h"

void wb::FuzzOne(ByteView bytes)
{
    FuzzInput input(bytes);
    const std::int32_t quality = input.Long();
    const FrameBuf picture = input.Picture(200, 2);
    const std::int32_t handle = FrameBufToDib(picture);
    Require(Graphics().VTGF_Write_JPEG_File(Scratch().Native("picture.jpg").c_str(), handle, &quality) == 1,
            "the file is written");
    Graphics().VTGF_DIB_Free(handle);

    ByteArray file;
    ReadFileBytes(Scratch().Path(QStringLiteral("picture.jpg")), file);
    const auto length = std::int32_t(file.size());
    const std::int32_t back = Graphics().VTGF_Read_JPEG(file.data(), &length);
    Require(Graphics().VTGF_DIB_GetWidth(back) == picture.Width &&
                Graphics().VTGF_DIB_GetHeight(back) == picture.Height,
            "the file holds a picture of that size");
    Graphics().VTGF_DIB_Free(back);
}
