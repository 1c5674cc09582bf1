#include "anim/gaiwriter.h"
#include "cli/command.h"
#include "cli/frameprogress.h"
#include "cli/pictureargument.h"
#include "gi/picturefile.h"

#include <QStringList>

#include <array>
#include <climits>
#include <optional>
#include <vector>

namespace wb::cli
{

namespace
{

constexpr int LargestDelay = 99999;

struct GaiJob {
    QString target; // as the user wrote them
    QStringList sources;
    std::optional<int> type;              // for every frame
    std::optional<std::array<int, 2>> at; // likewise
    std::optional<std::array<int, 4>> box;
    int delay = 0;
    GaiWriting writing;
};

void Declare(QCommandLineParser &parser)
{
    parser.addOption({QStringLiteral("type"),
                      QStringLiteral("GI type of every frame, 0 to 4 (default: by its transparency)."),
                      QStringLiteral("T")});
    parser.addOption(
        {QStringLiteral("at"),
         QStringLiteral("Place of every frame (default: a GI's own, and of a PNG that of the box)."),
         QStringLiteral("X,Y")});
    parser.addOption({QStringLiteral("delay"), QStringLiteral("Delay of every frame (default: 50)."),
                      QStringLiteral("N"), QStringLiteral("50")});
    parser.addOption(
        {QStringLiteral("box"),
         QStringLiteral("Place and size of the animation (default: 0,0 and the first frame's size)."),
         QStringLiteral("X,Y,W,H")});
    parser.addOption({QStringLiteral("background"), QStringLiteral("The animation is drawn over a GI.")});
    parser.addOption({QStringLiteral("packed"), QStringLiteral("Compress the frames.")});
    parser.addOption({QStringLiteral("crop"), QStringLiteral("Cut each frame to its visible pixels.")});
    parser.addOption({QStringLiteral("force"),
                      QStringLiteral("Replace a file that is already there; write frames that do not fit.")});
    parser.addPositionalArgument(QStringLiteral("OUT.gai"), QStringLiteral("The file to write."));
    parser.addPositionalArgument(QStringLiteral("FRAME"), QStringLiteral("PNG and GI files, in their order."),
                                 QStringLiteral("FRAME..."));
}

// Reads an option that may be missing; false when it is there and wrong.
template <std::size_t Count>
bool ReadOptional(const QCommandLineParser &parser, const char *name,
                  std::optional<std::array<int, Count>> &numbers)
{
    return !parser.isSet(QLatin1String(name)) ||
           ReadNumbers(parser.value(QLatin1String(name)), 0, LargestPlace, numbers.emplace());
}

// Reads a frame with its place and type; gives what is wrong with it, if anything.
QString ReadFrame(const GaiJob &job, const QString &source, FrameBuf &frame)
{
    frame = ReadPngOrGi(FromArgument(source));
    if (frame.Pixels.empty())
        return QStringLiteral("is no PNG or GI that can be read");
    if (job.at) {
        frame.X = (*job.at)[0];
        frame.Y = (*job.at)[1];
    } else if (job.box && frame.Kind.empty()) {
        frame.X = (*job.box)[0];
        frame.Y = (*job.box)[1];
    }
    frame.Delay = job.delay;
    frame.GiType = job.type.value_or(frame.TransType);
    return TypeProblem(frame, frame.GiType);
}

GaiBox BoxOf(const GaiJob &job, const FrameBuf &first)
{
    if (!job.box)
        return {0, 0, first.Width, first.Height};
    const auto &[x, y, width, height] = *job.box;
    return {x, y, width, height};
}

// Whether the frames fit; prints what does not.
bool FramesFit(const GaiBox &box, std::span<const FrameBuf> frames)
{
    const GaiErrors errors = CheckGaiProject(box, frames);
    if (errors.Count == 0)
        return true;
    for (const QString &line : errors.Text.split(QStringLiteral("\r\n"), Qt::SkipEmptyParts))
        PrintLine(line);
    return false;
}

int Write(const QCommandLineParser &parser, const GaiJob &job)
{
    FrameProgress progress(parser, job.target, 2);
    std::vector<FrameBuf> frames;
    const bool areRead = ReadSources(job.sources, progress, [&](const QString &source) {
        return ReadFrame(job, source, frames.emplace_back());
    });
    progress.Clear();
    if (!areRead)
        return Failed;
    const GaiBox box = BoxOf(job, frames.front());
    if (!parser.isSet(QStringLiteral("force")) && !FramesFit(box, frames))
        return Fail(job.target, QStringLiteral("has frames that do not fit; --force writes it"));
    const SaveEnd end =
        FrameJob().Save(FromArgument(job.target), progress.Stage(1, QStringLiteral("writing")),
                        [&](const GoOn &goOn) { return WriteGai(box, frames, job.writing, goOn); });
    progress.Clear();
    return StatusOf(end, job.target);
}

int Run(const QCommandLineParser &parser)
{
    GaiJob job;
    job.sources = parser.positionalArguments();
    job.target = job.sources.takeFirst();
    if (parser.isSet(QStringLiteral("type")) &&
        !ReadNumber(parser.value(QStringLiteral("type")), 0, LastGiType, job.type.emplace()))
        return Misuse(QStringLiteral("--type takes a number from 0 to 4"));
    if (!ReadOptional(parser, "at", job.at))
        return Misuse(QStringLiteral("--at takes two numbers from 0 to 99999, as in 10,20"));
    if (!ReadOptional(parser, "box", job.box))
        return Misuse(QStringLiteral("--box takes four numbers from 0 to 99999, as in 10,20,640,480"));
    if (!ReadNumber(parser.value(QStringLiteral("delay")), 0, LargestDelay, job.delay))
        return Misuse(QStringLiteral("--delay takes a number from 0 to 99999"));
    job.writing = {.Background = parser.isSet(QStringLiteral("background")),
                   .Packed = parser.isSet(QStringLiteral("packed")),
                   .Crop = parser.isSet(QStringLiteral("crop"))};
    return MayWrite(parser, job.target) ? Write(parser, job) : Failed;
}

} // namespace

const Command GaiCommand{"gai", "Turn PNG and GI files into a GAI.", Declare, 2, INT_MAX, Run};

} // namespace wb::cli
