#include "cli/pictureargument.h"

#include "cli/command.h"
#include "gfx/graphicslibrary.h"
#include "gfx/pixels.h"
#include "gi/gidocument.h"
#include "gi/giformat.h"
#include "platform/nativepath.h"

namespace wb::cli
{

FrameBuf ReadPng(const QString &argument)
{
    const std::string path = ToNativePath(FromArgument(argument));
    const std::int32_t handle = Graphics().VTGF_Read_PNG_File(path.c_str());
    FrameBuf picture = DibToFrameBuf(handle);
    picture.TransType = Graphics().VTGF_DIB_GetTransType(handle);
    Graphics().VTGF_DIB_Free(handle);
    return picture;
}

FrameBuf ReadPngOrGi(const QString &argument)
{
    FrameBuf picture = ReadPng(argument);
    if (!picture.Pixels.empty())
        return picture;
    picture = LoadGiFile(FromArgument(argument));
    const std::int32_t handle = FrameBufToDib(picture);
    picture.TransType = Graphics().VTGF_DIB_GetTransType(handle);
    Graphics().VTGF_DIB_Free(handle);
    return picture;
}

QString TypeProblem(const FrameBuf &picture, int type)
{
    return GiTypeAllowed(type, picture.TransType)
               ? QString()
               : QStringLiteral("its transparency does not allow type %1").arg(type);
}

} // namespace wb::cli
