#include "anim/haiproject.h"
#include "cli/command.h"
#include "cli/frameprogress.h"
#include "cli/pictureargument.h"

#include <climits>

namespace wb::cli
{

namespace
{

void Declare(QCommandLineParser &parser)
{
    DeclareForce(parser);
    parser.addPositionalArgument(QStringLiteral("OUT.hai"), QStringLiteral("The file to write."));
    parser.addPositionalArgument(QStringLiteral("PNG"), QStringLiteral("The pictures, in their order."),
                                 QStringLiteral("PNG..."));
}

int Run(const QCommandLineParser &parser)
{
    QStringList sources = parser.positionalArguments();
    const QString target = sources.takeFirst();
    if (!MayWrite(parser, target))
        return Failed;
    HaiProject project;
    FrameProgress progress(parser, target, 2);
    const bool areRead = ReadPngs(sources, progress, [&project](FrameBuf picture) {
        project.AddFrame(HaiProject::Animation, std::move(picture), {});
        return QString();
    });
    if (!areRead)
        return Failed;
    const SaveEnd end = project.Save(FromArgument(target), progress.Stage(1, QStringLiteral("writing")));
    progress.Clear();
    return StatusOf(end, target);
}

} // namespace

const Command HaiCommand{"hai", "Turn PNG files into a HAI of 128 x 128 indexed frames.", Declare, 2, INT_MAX,
                         Run};

} // namespace wb::cli
