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

bool ReadPngs(const QStringList &sources, FrameProgress &progress,
              const std::function<QString(FrameBuf)> &take)
{
    const FrameStep show = progress.Stage(0, QStringLiteral("reading"));
    std::int32_t done = 0;
    for (const QString &source : sources) {
        FrameBuf picture = ReadPng(FromArgument(source));
        const QString problem =
            HoldsPicture(picture) ? take(std::move(picture)) : QStringLiteral("is no PNG that can be read");
        if (!problem.isEmpty()) {
            progress.Clear();
            Fail(source, problem);
            return false;
        }
        show(++done, std::int32_t(sources.size()));
    }
    return true;
}

int StatusOf(SaveEnd end, const QString &target)
{
    if (end == SaveEnd::Saved)
        return Done;
    return Fail(target, end == SaveEnd::TooLarge ? QStringLiteral("would be too large")
                                                 : QStringLiteral("can't be written"));
}

} // namespace wb::cli
