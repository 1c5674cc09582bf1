#include "viewer/documentloader.h"

#include "anim/gaireader.h"
#include "anim/haireader.h"
#include "common/files.h"
#include "common/paths.h"
#include "gfx/graphicslibrary.h"
#include "gi/aftreader.h"
#include "gi/gidocument.h"
#include "sound/sound.h"
#include "viewer/filetype.h"

#include <algorithm>
#include <limits>
#include <new>
#include <string_view>

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

FrameSet OpenAft(ByteView bytes, const char *, const LoadOptions &options)
{
    return OpenAftDocument(bytes, options.AftColor);
}

// From the first four bytes.
const char *SoundKind(ByteView start)
{
    return std::ranges::equal(start.first(4), std::string_view("RIFF")) ? "WAV" : "MP3";
}

// The stream reads the bytes where they lie, so they are moved into its document, never copied.
FrameSet OpenSound(ByteArray bytes)
{
    FrameSet document = SoundDocument(SoundKind(bytes), OpenSoundBuffer(bytes));
    if (document.Count > 0)
        document.SoundBytes = std::move(bytes);
    return document;
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

// One row makes a format that is read whole known to the viewer and to the command line. Sounds are not: what
// is read of them is read while they play.
constexpr Reader Readers[] = {
    {FileType::Bmp, "BMP", OpenPicture<&GraphicsLibrary::VTGF_Read_BMP>},
    {FileType::Jpg, "JPG", OpenPicture<&GraphicsLibrary::VTGF_Read_JPEG>},
    {FileType::Png, "PNG", OpenPicture<&GraphicsLibrary::VTGF_Read_PNG>},
    {FileType::Psd, "PSD", OpenPicture<&GraphicsLibrary::VTGF_Read_PSD>},
    {FileType::Dds, "DDS", OpenPicture<&GraphicsLibrary::VTGF_Read_DDS>},
    {FileType::Aft, "AFT", OpenAft},
    {FileType::Gi, "GI", OpenGi},
    {FileType::Gai, "GAI", OpenGai},
    {FileType::Hai, "HAI", OpenHai},
};

const Reader *FindReader(FileType type)
{
    const auto reader = std::ranges::find(Readers, type, &Reader::type);
    return reader == std::end(Readers) ? nullptr : reader;
}

FrameSet ReadDocument(ByteView bytes, const LoadOptions &options)
{
    const Reader *reader = FindReader(DetectBufferType(bytes));
    if (reader == nullptr || bytes.size() > std::numeric_limits<std::int32_t>::max())
        return {};
    return reader->open(bytes, reader->kind, options);
}

FrameSet ReadDocumentFile(const QString &path, const LoadOptions &options)
{
    const auto start = FirstBytes(path);
    const FileType type = DetectBufferType(start);
    // A file that sounds is never held in memory.
    if (type == FileType::Sound)
        return SoundDocument(SoundKind(start), OpenSoundFile(path));
    // What nothing reads need not be loaded, however large it is.
    if (FindReader(type) == nullptr)
        return {};
    ByteArray bytes;
    ReadFileBytes(path, bytes);
    LoadOptions here = options;
    if (!here.Background)
        here.Background = GiBeside(path);
    return ReadDocument(bytes, here);
}

template <typename Open>
FrameSet WithinMemory(Open open)
{
    try {
        return open();
    } catch (const std::bad_alloc &) {
        return {};
    }
}

} // namespace

FrameSet OpenDocumentFile(const QString &path, const LoadOptions &options)
{
    return WithinMemory([&] { return ReadDocumentFile(path, options); });
}

FrameSet OpenDocumentBuffer(ByteArray bytes, const LoadOptions &options)
{
    return WithinMemory([&] {
        return DetectBufferType(bytes) == FileType::Sound ? OpenSound(std::move(bytes))
                                                          : ReadDocument(bytes, options);
    });
}

} // namespace wb
