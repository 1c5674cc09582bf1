#include "anim/gaiformat.h"
#include "cli/archiveargument.h"
#include "cli/command.h"
#include "cli/terminalprogress.h"
#include "common/files.h"
#include "common/paths.h"
#include "dat/datreader.h"
#include "gfx/graphicslibrary.h"
#include "gi/giformat.h"
#include "platform/nativepath.h"
#include "platform/terminal.h"
#include "sound/soundlibrary.h"
#include "viewer/documentloader.h"
#include "viewer/filetype.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <optional>

namespace wb::cli
{

namespace
{

QJsonObject FrameObject(const FrameSet &document, std::size_t frame)
{
    const std::int32_t handle = document.Pictures[frame];
    QJsonObject object{{QStringLiteral("width"), Graphics().VTGF_DIB_GetWidth(handle)},
                       {QStringLiteral("height"), Graphics().VTGF_DIB_GetHeight(handle)},
                       {QStringLiteral("bpp"), Graphics().VTGF_DIB_GetBPP(handle)}};
    if (frame < document.FrameTypes.size())
        object.insert(QStringLiteral("type"), document.FrameTypes[frame]);
    return object;
}

void AddBounds(QJsonObject &object, const GiRect &bounds)
{
    object.insert(QStringLiteral("left"), bounds.Left);
    object.insert(QStringLiteral("top"), bounds.Top);
    object.insert(QStringLiteral("right"), bounds.Right);
    object.insert(QStringLiteral("bottom"), bounds.Bottom);
}

// What only the header of a GI or GAI tells, of so many frames.
void AddHeader(QJsonObject &object, const QString &path, std::int32_t count)
{
    ByteArray bytes;
    ReadFileBytes(path, bytes);
    if (const auto picture = ReadGiHeader(bytes, 0))
        AddBounds(object, picture->Bounds);
    const auto animation = ReadGaiHeader(bytes);
    if (!animation)
        return;
    AddBounds(object, animation->Box);
    object.insert(QStringLiteral("background"), animation->Background);
    QJsonArray delays;
    for (std::int32_t i = 0; i < std::min(count, animation->FrameCount); ++i)
        delays.append(ReadGaiFrame(bytes, *animation, i).Delay);
    object.insert(QStringLiteral("delays"), delays);
}

// Nothing for what can't be read.
QJsonObject DescribeDocument(const QString &path, const FrameSet &document)
{
    if (document.Count == 0)
        return {};
    QJsonObject object{{QStringLiteral("kind"), QString::fromStdString(document.Kind)},
                       {QStringLiteral("count"), document.Count},
                       {QStringLiteral("info"), QString::fromStdString(document.InfoText)}};
    if (document.Mode == DocumentMode::Sound)
        return object;
    QJsonArray frames;
    for (std::size_t i = 0; i < std::size_t(document.Count); ++i)
        frames.append(FrameObject(document, i));
    object.insert(QStringLiteral("frames"), frames);
    if (!document.FrameTypes.empty())
        AddHeader(object, path, document.Count);
    return object;
}

// Nothing for what is no archive.
QJsonObject DescribeArchive(const QString &path)
{
    FileError error = FileError::None;
    const PkgHandle archive = PkgOpenRead(path, error);
    if (archive == nullptr || !IsArchive(*archive))
        return {};
    int folders = 0;
    int files = 0;
    qint64 size = 0;
    qint64 packed = 0;
    for (const PkgEntry &entry : PkgReadTree(*archive, archive->RootOffset)) {
        if (entry.Type == PkgFolder) {
            ++folders;
            continue;
        }
        ++files;
        size += entry.Size;
        packed += entry.PackedSize;
    }
    return {{QStringLiteral("kind"), QStringLiteral("PKG")},
            {QStringLiteral("folders"), folders},
            {QStringLiteral("files"), files},
            {QStringLiteral("size"), size},
            {QStringLiteral("packed"), packed}};
}

// Nothing for what is no such file. Only its name tells that it could be one.
QJsonObject DescribeDat(const QString &path, Progress &bar)
{
    const bool isDat = GetExtension(path).compare(QStringLiteral("dat"), Qt::CaseInsensitive) == 0;
    const DatTree tree = isDat ? DatLoadFile(path, {.Bar = &bar}) : DatTree();
    if (tree.Count() == 0)
        return {};
    return {{QStringLiteral("kind"), QStringLiteral("DAT")},
            {QStringLiteral("zl"), tree.IsZL},
            {QStringLiteral("items"), tree.Count()}};
}

QString Number(const QJsonObject &holder, const char *key)
{
    return QString::number(holder.value(QLatin1String(key)).toInteger());
}

QString ArchiveText(const QJsonObject &object)
{
    return QStringLiteral("PKG, folders: %1, files: %2\n%3 bytes, packed %4\n")
        .arg(Number(object, "folders"), Number(object, "files"), Number(object, "size"),
             Number(object, "packed"));
}

QString DatText(const QJsonObject &object)
{
    const bool isZL = object.value(QStringLiteral("zl")).toBool();
    return QStringLiteral("DAT, items: %1, %2\n")
        .arg(Number(object, "items"), isZL ? QStringLiteral("compressed") : QStringLiteral("plain"));
}

QString DocumentText(const QJsonObject &object)
{
    const QString kind = object.value(QStringLiteral("kind")).toString();
    if (!object.contains(QStringLiteral("frames")))
        return QStringLiteral("%1, %2 Hz\n").arg(kind, object.value(QStringLiteral("info")).toString());
    QString text = QStringLiteral("%1, frames: %2\n").arg(kind, Number(object, "count"));
    if (object.contains(QStringLiteral("left")))
        text += QStringLiteral("at %1,%2 to %3,%4\n")
                    .arg(Number(object, "left"), Number(object, "top"), Number(object, "right"),
                         Number(object, "bottom"));
    if (object.value(QStringLiteral("background")).toInt() != 0)
        text += QStringLiteral("drawn over a background\n");
    const QJsonArray frames = object.value(QStringLiteral("frames")).toArray();
    const QJsonArray delays = object.value(QStringLiteral("delays")).toArray();
    for (qsizetype i = 0; i < frames.size(); ++i) {
        const QJsonObject frame = frames[i].toObject();
        text += QStringLiteral("frame %1: %2 x %3, %4 bits per pixel")
                    .arg(QString::number(i), Number(frame, "width"), Number(frame, "height"),
                         Number(frame, "bpp"));
        if (frame.contains(QStringLiteral("type")))
            text += QStringLiteral(", type %1").arg(Number(frame, "type"));
        if (i < delays.size())
            text += QStringLiteral(", delay %1").arg(delays[i].toInteger());
        text += u'\n';
    }
    return text;
}

QString TextOf(const QJsonObject &object)
{
    const QString kind = object.value(QStringLiteral("kind")).toString();
    return kind == QStringLiteral("PKG")   ? ArchiveText(object)
           : kind == QStringLiteral("DAT") ? DatText(object)
                                           : DocumentText(object);
}

void Declare(QCommandLineParser &parser)
{
    DeclareJson(parser);
    parser.addPositionalArgument(QStringLiteral("FILE"), QStringLiteral("The file to look at."));
}

int FailLeftOut(const QString &argument, const FrameSet &document)
{
    return Fail(argument,
                QStringLiteral("has more frames than memory holds; %1 are left out").arg(document.LeftOut));
}

FrameSet OpenDocument(const QString &path, bool isSound, Progress &bar)
{
    std::optional<StandardErrorDropped> dropped; // a decoder remarks there on sounds that are not quite right
    if (isSound)
        dropped.emplace();
    return OpenDocumentFile(path, {.Bar = &bar});
}

int Run(const QCommandLineParser &parser)
{
    const QString argument = parser.positionalArguments().front();
    const QString path = FromArgument(argument);
    InputFile file;
    if (file.Open(ToNativePath(path)) != FileError::None || file.Size() == 0)
        return Fail(argument, QStringLiteral("can't be read or is empty"));
    TerminalProgress bar(IsQuiet(parser));
    QJsonObject description = IsPkgPath(path) ? DescribeArchive(path) : DescribeDat(path, bar);
    FrameSet document;
    if (description.isEmpty() && !IsPkgPath(path)) {
        // Loading it takes longer than most commands do, so only this one does, for what may be a sound.
        const bool isSound = DetectFileType(path) == FileType::Sound;
        if (isSound && !LoadSoundLibrary(QCoreApplication::applicationDirPath()))
            return Fail(QLatin1String(SoundLibraryFile), QStringLiteral("not found"));
        document = OpenDocument(path, isSound, bar);
        description = DescribeDocument(path, document);
    }
    if (description.isEmpty())
        return document.LeftOut > 0 ? FailLeftOut(argument, document)
                                    : Fail(argument, QStringLiteral("is of no kind that can be read"));
    if (WantsJson(parser))
        PrintJson(QJsonDocument(description));
    else
        Print(TextOf(description));
    return document.LeftOut == 0 ? Done : FailLeftOut(argument, document);
}

} // namespace

const Command InfoCommand{"info", "Tell what a file is.", Declare, 1, 1, Run};

} // namespace wb::cli
