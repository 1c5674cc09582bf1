#include "gi/gidocument.h"

#include "common/files.h"
#include "gfx/pixels.h"
#include "gi/gidecoder.h"

namespace wb
{

FrameSet OpenGiDocument(ByteView buffer, std::int32_t offset)
{
    FrameBuf picture;
    DecodeGi(picture, buffer, offset);
    FrameSet document = StillPicture(picture.Kind, FrameBufToDib(picture));
    if (document.Count == 1) {
        document.InfoText = std::to_string(picture.GiType);
        document.FrameTypes = {picture.GiType};
    }
    return document;
}

FrameBuf LoadGiFile(const QString &path)
{
    ByteArray bytes;
    ReadFileBytes(path, bytes);
    FrameBuf picture;
    std::int32_t offset = 0;
    DecodeGi(picture, bytes, offset);
    return picture;
}

} // namespace wb
