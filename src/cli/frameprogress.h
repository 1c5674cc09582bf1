// The progress of a command that works on many frames, in stages such as reading and writing.
#pragma once

#include "anim/framejob.h"
#include "cli/terminalprogress.h"

#include <QCommandLineParser>
#include <QString>

namespace wb::cli
{

class FrameProgress
{
public:
    // `target` is what the bar shows first.
    FrameProgress(const QCommandLineParser &parser, const QString &target, std::int32_t stages);

    // Shows "reading 3 / 12" in a stage, counted from 0, that is called "reading".
    FrameStep Stage(std::int32_t stage, const QString &name);

    void Clear() { m_bar.ProgressClear(); }

private:
    static constexpr std::int32_t StageLength = 1000;

    TerminalProgress m_bar;
};

} // namespace wb::cli
