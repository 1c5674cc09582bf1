#include "cli/pictureargument.h"

#include "cli/command.h"
#include "cli/frameprogress.h"
#include "gfx/pixels.h"
#include "gi/giformat.h"
#include "gi/picturefile.h"

namespace wb::cli
{

QString TypeProblem(const FrameBuf &picture, int type)
{
    return GiTypeAllowed(type, picture.TransType)
               ? QString()
               : QStringLiteral("its transparency does not allow type %1").arg(type);
}

bool ReadSources(const QStringList &sources, FrameProgress &progress,
                 const std::function<QString(const QString &source)> &read)
{
    const FrameStep show = progress.Stage(0, QStringLiteral("reading"));
    std::int32_t done = 0;
    for (const QString &source : sources) {
        const QString problem = read(source);
        if (!problem.isEmpty()) {
            progress.Clear();
            Fail(source, problem);
            return false;
        }
        show(++done, std::int32_t(sources.size()));
    }
    return true;
}

bool ReadPngs(const QStringList &sources, FrameProgress &progress,
              const std::function<QString(FrameBuf)> &take)
{
    return ReadSources(sources, progress, [&](const QString &source) {
        FrameBuf picture = ReadPng(FromArgument(source));
        return HoldsPicture(picture) ? take(std::move(picture))
                                     : QStringLiteral("is no PNG that can be read");
    });
}

int StatusOf(SaveEnd end, const QString &target)
{
    if (end == SaveEnd::Saved)
        return Done;
    return Fail(target, end == SaveEnd::TooLarge ? QStringLiteral("would be too large")
                                                 : QStringLiteral("can't be written"));
}

} // namespace wb::cli
