#include "anim/animproject.h"
#include "anim/gaiproject.h"
#include "cli/command.h"
#include "cli/frameprogress.h"
#include "cli/pictureargument.h"
#include "common/paths.h"

#include <climits>

namespace wb::cli
{

namespace
{

void Declare(QCommandLineParser &parser)
{
    DeclareForce(parser);
    parser.addPositionalArgument(
        QStringLiteral("OUT"),
        QStringLiteral("A .gai to write, to be drawn over the first picture; or the name of PNG files that "
                       "are numbered _000, _001, ..."));
    parser.addPositionalArgument(QStringLiteral("PNG"),
                                 QStringLiteral("Two or more pictures of one size, in their order."),
                                 QStringLiteral("PNG..."));
}

bool IsGai(const QString &target)
{
    return GetExtension(FromArgument(target)).toLower() == QStringLiteral("gai");
}

QString PngTarget(const QString &target, std::int32_t frame)
{
    return Beside(target, GetFileName(AnimProject::PngPath(FromArgument(target), frame)));
}

// Which frames are to be written is known by the number of pictures.
bool MayWriteAll(const QCommandLineParser &parser, const QString &target, qsizetype count)
{
    if (IsGai(target))
        return MayWrite(parser, target);
    if (!NamesFile(target))
        return false;
    for (qsizetype i = 0; i < count; ++i)
        if (!MayWrite(parser, PngTarget(target, std::int32_t(i))))
            return false;
    return true;
}

SaveEnd WriteGaiFile(const AnimProject &project, const QString &path, const FrameStep &step)
{
    GaiProject gai;
    gai.AddGis({project.Frames().begin(), project.Frames().end()}, {}, [](int, int) {});
    gai.SetOptions({.Background = true});
    return gai.Save(path, step);
}

// Ends at the first file that can't be written, so that those after it stay as they are.
SaveEnd WritePngFiles(AnimProject &project, const QString &path, const FrameStep &step)
{
    return project.WritePngs(path, [&](std::int32_t done, std::int32_t all) {
        step(done, all);
        if (project.Unwritten() >= 0)
            project.Stop();
    });
}

void TellUnshown(const AnimProject::Unshown &unshown)
{
    if (unshown.Pixels != 0)
        PrintLine(
            QStringLiteral("%1 pixel(s) of %2 frame(s) will look different: they are transparent where the "
                           "picture before is not")
                .arg(unshown.Pixels)
                .arg(unshown.Frames));
}

int Run(const QCommandLineParser &parser)
{
    QStringList sources = parser.positionalArguments();
    const QString target = sources.takeFirst();
    if (!MayWriteAll(parser, target, sources.size()))
        return Failed;
    AnimProject project;
    FrameProgress progress(parser, target, 3);
    const bool areRead = ReadPngs(sources, progress, [&project](FrameBuf picture) {
        return project.AddFrame(std::move(picture), {})
                   ? QString()
                   : QStringLiteral("has another size than the first picture");
    });
    if (!areRead)
        return Failed;
    project.Build(progress.Stage(1, QStringLiteral("building")));
    const FrameStep writing = progress.Stage(2, QStringLiteral("writing"));
    const QString path = FromArgument(target);
    const SaveEnd end =
        IsGai(target) ? WriteGaiFile(project, path, writing) : WritePngFiles(project, path, writing);
    progress.Clear();
    if (end == SaveEnd::Saved)
        TellUnshown(project.NotShown());
    const std::int32_t unwritten = project.Unwritten();
    return StatusOf(end, unwritten < 0 ? target : PngTarget(target, unwritten));
}

} // namespace

const Command AnimateCommand{
    "animate", "Turn pictures that follow each other into the frames of an animation.", Declare, 3, INT_MAX,
    Run};

} // namespace wb::cli
