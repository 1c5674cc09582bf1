#include "viewer/documentloader.h"

#include "common/files.h"
#include "gfx/graphicslibrary.h"
#include "gi/gidocument.h"
#include "viewer/filetype.h"

#include <algorithm>
#include <limits>

namespace wb
{

namespace
{

using PictureReader = std::int32_t (*GraphicsLibrary::*)(const std::uint8_t *, const std::int32_t *);

template <PictureReader Read>
FrameSet OpenPicture(ByteView bytes, const char *kind)
{
    const auto length = static_cast<std::int32_t>(bytes.size());
    return StillPicture(kind, (Graphics().*Read)(bytes.data(), &length));
}

FrameSet OpenGi(ByteView bytes, const char *)
{
    return OpenGiDocument(bytes, 0);
}

struct Reader {
    FileType type;
    const char *kind;
    FrameSet (*open)(ByteView bytes, const char *kind);
};

// One row makes a format known to the viewer and to the command line.
constexpr Reader Readers[] = {
    {FileType::Bmp, "BMP", OpenPicture<&GraphicsLibrary::VTGF_Read_BMP>},
    {FileType::Jpg, "JPG", OpenPicture<&GraphicsLibrary::VTGF_Read_JPEG>},
    {FileType::Png, "PNG", OpenPicture<&GraphicsLibrary::VTGF_Read_PNG>},
    {FileType::Psd, "PSD", OpenPicture<&GraphicsLibrary::VTGF_Read_PSD>},
    {FileType::Dds, "DDS", OpenPicture<&GraphicsLibrary::VTGF_Read_DDS>},
    {FileType::Gi, "GI", OpenGi},
};

const Reader *FindReader(FileType type)
{
    const auto reader = std::ranges::find(Readers, type, &Reader::type);
    return reader == std::end(Readers) ? nullptr : reader;
}

} // namespace

FrameSet OpenDocumentFile(const QString &path)
{
    // What nothing reads need not be loaded, however large it is.
    if (FindReader(DetectFileType(path)) == nullptr)
        return {};
    ByteArray bytes;
    ReadFileBytes(path, bytes);
    return OpenDocumentBuffer(bytes);
}

FrameSet OpenDocumentBuffer(ByteView bytes)
{
    const Reader *reader = FindReader(DetectBufferType(bytes));
    if (reader == nullptr || bytes.size() > std::numeric_limits<std::int32_t>::max())
        return {};
    return reader->open(bytes, reader->kind);
}

} // namespace wb
