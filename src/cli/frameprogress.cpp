#include "cli/frameprogress.h"

#include "cli/command.h"

namespace wb::cli
{

FrameProgress::FrameProgress(const QCommandLineParser &parser, const QString &target, std::int32_t stages)
    : m_bar(IsQuiet(parser))
{
    m_bar.ProgressStart(stages * StageLength, target);
}

FrameStep FrameProgress::Stage(std::int32_t stage, const QString &name)
{
    return [this, stage, name](std::int32_t done, std::int32_t all) {
        const auto part = std::int32_t(std::int64_t(done) * StageLength / all);
        m_bar.ProgressStep(stage * StageLength + part,
                           QStringLiteral("%1 %2 / %3").arg(name).arg(done).arg(all));
    };
}

} // namespace wb::cli
