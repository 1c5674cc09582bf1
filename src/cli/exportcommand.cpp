#include "cli/command.h"
#include "cli/terminalprogress.h"
#include "common/files.h"
#include "common/paths.h"
#include "common/text.h"
#include "gi/gidocument.h"
#include "viewer/documentloader.h"
#include "viewer/frameexport.h"

#include <QRegularExpression>

#include <algorithm>
#include <climits>
#include <optional>
#include <span>

namespace wb::cli
{

namespace
{

constexpr int DefaultQuality = 90;
const QString BackgroundOption = QStringLiteral("background");
const QString NoBackgroundOption = QStringLiteral("no-background");
const QString AltGaiOption = QStringLiteral("alt-gai");
const QString AftColorOption = QStringLiteral("aft-color");

struct ExportJob {
    QString source; // as the user wrote them
    QString target;
    ExportFormat format = ExportFormat::Png;
    int frame = 0;
    bool all = false;
    int quality = DefaultQuality;
    std::int32_t aftColor = 0;
};

std::optional<ExportFormat> FormatOf(const QString &target)
{
    const QString extension = GetExtension(FromArgument(target)).toLower();
    if (extension == QStringLiteral("png"))
        return ExportFormat::Png;
    if (extension == QStringLiteral("jpg") || extension == QStringLiteral("jpeg") ||
        extension == QStringLiteral("jpe"))
        return ExportFormat::Jpeg;
    return std::nullopt;
}

void Declare(QCommandLineParser &parser)
{
    parser.addOption({QStringLiteral("frame"), QStringLiteral("The frame to write (default: 0)."),
                      QStringLiteral("N"), QStringLiteral("0")});
    parser.addOption({QStringLiteral("all"), QStringLiteral("Write every frame, numbered _000, _001, ...")});
    parser.addOption({QStringLiteral("quality"), QStringLiteral("JPEG quality, 0 to 100 (default: 90)."),
                      QStringLiteral("Q"), QString::number(DefaultQuality)});
    parser.addOption(
        {BackgroundOption,
         QStringLiteral("Draw a GAI over this GI (default: the one beside it, of the same title)."),
         QStringLiteral("GI")});
    parser.addOption({NoBackgroundOption, QStringLiteral("Draw a GAI over nothing.")});
    parser.addOption(
        {AltGaiOption, QStringLiteral("Pile up the frames of a GAI that lacks its background.")});
    parser.addOption({AftColorOption, QStringLiteral("The colour of an AFT font (default: 000000)."),
                      QStringLiteral("RRGGBB"), QStringLiteral("000000")});
    DeclareForce(parser);
    parser.addPositionalArgument(QStringLiteral("FILE"), QStringLiteral("The picture, animation or font."));
    parser.addPositionalArgument(QStringLiteral("OUT"), QStringLiteral("The file to write: .png or .jpg."));
}

// Reads "RRGGBB"; false for any other text.
bool ReadColor(const QString &text, std::int32_t &color)
{
    static const QRegularExpression form(QStringLiteral("\\A[0-9A-Fa-f]{6}\\z"));
    const std::int32_t value = HexToLong(text);
    color = value >> 16 | (value & 0xFF00) | (value & 0xFF) << 16;
    return form.match(text).hasMatch();
}

// One of all frames, in the folder as the user wrote it.
QString TargetOf(const ExportJob &job, int frame, int count)
{
    return Beside(job.target, GetFileName(FramePath(FromArgument(job.target), frame, count)));
}

int WriteAll(const QCommandLineParser &parser, const ExportJob &job, const FrameSet &document,
             TerminalProgress &bar)
{
    for (int i = 0; i < document.Count; ++i)
        if (!MayWrite(parser, TargetOf(job, i, document.Count)))
            return Failed;
    bar.ProgressStart(document.Count, job.target);
    const ExportOrder order = {FromArgument(job.target), job.format, job.quality, QStringLiteral("frame ")};
    const ExportResult result = WriteAllPictures(document, order, bar, AbortFlag());
    bar.ProgressClear();
    if (result.End == ExportEnd::Failed)
        return Fail(TargetOf(job, result.Written, document.Count), QStringLiteral("can't be written"));
    const auto shown = std::span(document.Pictures).first(std::size_t(document.Count));
    if (const auto missing = std::ranges::count(shown, 0); missing != 0)
        return Fail(job.source, QStringLiteral("lacks %1 of its frames").arg(missing));
    if (document.LeftOut > 0)
        return Fail(job.source,
                    QStringLiteral("has more frames than memory holds; %1 are written").arg(document.Count));
    return Done;
}

// A background that the user names must be there.
bool ReadLoading(const QCommandLineParser &parser, LoadOptions &loading)
{
    loading.AltGaiMethod = parser.isSet(AltGaiOption);
    if (parser.isSet(NoBackgroundOption))
        loading.Background = QString();
    if (!parser.isSet(BackgroundOption))
        return true;
    const QString background = parser.value(BackgroundOption);
    loading.Background = FromArgument(background);
    if (!LoadGiFile(*loading.Background).Pixels.empty())
        return true;
    Fail(background, QStringLiteral("is no GI that can be read"));
    return false;
}

int Write(const QCommandLineParser &parser, const ExportJob &job)
{
    TerminalProgress bar(IsQuiet(parser));
    LoadOptions loading{.AftColor = job.aftColor, .Bar = &bar};
    if (!ReadLoading(parser, loading))
        return Failed;
    const FrameSet document = OpenDocumentFile(FromArgument(job.source), loading);
    if (document.Count == 0 || document.Mode != DocumentMode::Pictures)
        return Fail(job.source, QStringLiteral("is no picture that can be read"));
    if (job.all)
        return WriteAll(parser, job, document, bar);
    if (job.frame >= document.Count || document.Pictures[std::size_t(job.frame)] == 0)
        return Fail(job.source, QStringLiteral("has no frame %1").arg(job.frame));
    if (!WritePicture(FromArgument(job.target), document.Pictures[std::size_t(job.frame)], job.format,
                      job.quality))
        return Fail(job.target, QStringLiteral("can't be written"));
    return Done;
}

int Run(const QCommandLineParser &parser)
{
    ExportJob job;
    job.source = parser.positionalArguments()[0];
    job.target = parser.positionalArguments()[1];
    job.all = parser.isSet(QStringLiteral("all"));
    if (job.all && parser.isSet(QStringLiteral("frame")))
        return Misuse(QStringLiteral("--frame and --all exclude each other"));
    if (parser.isSet(BackgroundOption) && parser.isSet(NoBackgroundOption))
        return Misuse(QStringLiteral("--background and --no-background exclude each other"));
    if (!ReadNumber(parser.value(QStringLiteral("frame")), 0, INT_MAX, job.frame))
        return Misuse(QStringLiteral("--frame takes a number from 0 on"));
    if (!ReadNumber(parser.value(QStringLiteral("quality")), 0, 100, job.quality))
        return Misuse(QStringLiteral("--quality takes a number from 0 to 100"));
    if (!ReadColor(parser.value(AftColorOption), job.aftColor))
        return Misuse(QStringLiteral("--aft-color takes six hexadecimal digits, red first"));
    const std::optional<ExportFormat> format = FormatOf(job.target);
    if (!format)
        return Misuse(QStringLiteral("%1: the name must end in .png, .jpg, .jpeg or .jpe").arg(job.target));
    job.format = *format;
    if (job.all ? !NamesFile(job.target) : !MayWrite(parser, job.target))
        return Failed;
    return Write(parser, job);
}

} // namespace

const Command ExportCommand{
    "export", "Write frames of a picture, animation or font as PNG or JPEG.", Declare, 2, 2, Run};

} // namespace wb::cli
