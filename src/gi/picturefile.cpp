#include "gi/picturefile.h"

#include "gfx/graphicslibrary.h"
#include "gfx/pixels.h"
#include "gi/gidocument.h"
#include "platform/nativepath.h"

namespace wb
{

FrameBuf ReadPng(const QString &path)
{
    const std::int32_t handle = Graphics().VTGF_Read_PNG_File(ToNativePath(path).c_str());
    FrameBuf picture = DibToFrameBuf(handle);
    picture.TransType = TransTypeOf(picture.Pixels);
    Graphics().VTGF_DIB_Free(handle);
    return picture;
}

FrameBuf ReadPngOrGi(const QString &path)
{
    FrameBuf picture = ReadPng(path);
    if (HoldsPicture(picture))
        return picture;
    picture = LoadGiFile(path);
    picture.TransType = TransTypeOf(picture.Pixels);
    return picture;
}

bool WritePng(const QString &path, const FrameBuf &picture)
{
    const std::string native = ToNativePath(path);
    const std::int32_t handle = FrameBufToDib(picture);
    const bool isWritten = !native.empty() && Graphics().VTGF_Write_PNG_File(native.c_str(), handle) != 0;
    Graphics().VTGF_DIB_Free(handle);
    return isWritten;
}

} // namespace wb
