#include "viewer/documentloader.h"

#include "anim/gaireader.h"
#include "anim/haireader.h"
#include "common/files.h"
#include "common/paths.h"
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
FrameSet OpenPicture(ByteView bytes, const char *kind, const LoadOptions &)
{
    const auto length = static_cast<std::int32_t>(bytes.size());
    return StillPicture(kind, (Graphics().*Read)(bytes.data(), &length));
}

FrameSet OpenGi(ByteView bytes, const char *, const LoadOptions &)
{
    return OpenGiDocument(bytes, 0);
}

FrameSet OpenGai(ByteView bytes, const char *, const LoadOptions &options)
{
    const QString background = options.Background.value_or(QString());
    FrameBuf canvas = background.isEmpty() ? FrameBuf() : LoadGiFile(background);
    return OpenGaiDocument(bytes, canvas,
                           {.AltMethod = options.AltGaiMethod, .Bar = options.Bar, .Abort = options.Abort});
}

FrameSet OpenHai(ByteView bytes, const char *, const LoadOptions &options)
{
    return OpenHaiDocument(bytes, {.Bar = options.Bar, .Abort = options.Abort});
}

QString GiBeside(const QString &path)
{
    return PathIn(GetFolder(path), GetFileTitle(path) + QStringLiteral(".GI"));
}

struct Reader {
    FileType type;
    const char *kind;
    FrameSet (*open)(ByteView bytes, const char *kind, const LoadOptions &options);
};

// One row makes a format known to the viewer and to the command line.
constexpr Reader Readers[] = {
    {FileType::Bmp, "BMP", OpenPicture<&GraphicsLibrary::VTGF_Read_BMP>},
    {FileType::Jpg, "JPG", OpenPicture<&GraphicsLibrary::VTGF_Read_JPEG>},
    {FileType::Png, "PNG", OpenPicture<&GraphicsLibrary::VTGF_Read_PNG>},
    {FileType::Psd, "PSD", OpenPicture<&GraphicsLibrary::VTGF_Read_PSD>},
    {FileType::Dds, "DDS", OpenPicture<&GraphicsLibrary::VTGF_Read_DDS>},
    {FileType::Gi, "GI", OpenGi},
    {FileType::Gai, "GAI", OpenGai},
    {FileType::Hai, "HAI", OpenHai},
};

const Reader *FindReader(FileType type)
{
    const auto reader = std::ranges::find(Readers, type, &Reader::type);
    return reader == std::end(Readers) ? nullptr : reader;
}

} // namespace

FrameSet OpenDocumentFile(const QString &path, const LoadOptions &options)
{
    // What nothing reads need not be loaded, however large it is.
    if (FindReader(DetectFileType(path)) == nullptr)
        return {};
    ByteArray bytes;
    ReadFileBytes(path, bytes);
    LoadOptions here = options;
    if (!here.Background)
        here.Background = GiBeside(path);
    return OpenDocumentBuffer(bytes, here);
}

FrameSet OpenDocumentBuffer(ByteView bytes, const LoadOptions &options)
{
    const Reader *reader = FindReader(DetectBufferType(bytes));
    if (reader == nullptr || bytes.size() > std::numeric_limits<std::int32_t>::max())
        return {};
    return reader->open(bytes, reader->kind, options);
}

} // namespace wb
