#include "anim/framejob.h"

#include "common/files.h"

#include <QScopedValueRollback>

#include <utility>

namespace wb
{

bool FrameJob::Run(const FrameStep &step, const std::function<void(const GoOn &)> &work)
{
    m_isStopping = false;
    const QScopedValueRollback busy(m_isBusy, true);
    work([&](std::int32_t done, std::int32_t all) {
        step(done, all);
        return !m_isStopping;
    });
    return !m_isStopping;
}

OpenEnd FrameJob::Open(const QString &path, const FrameStep &step,
                       const std::function<void(ByteView file, const GoOn &)> &read)
{
    ByteArray file;
    if (IsBusy() || ReadFileBytes(path, file) == 0)
        return OpenEnd::Failed;
    return Run(step, [&](const GoOn &goOn) { read(file, goOn); }) ? OpenEnd::Read : OpenEnd::Stopped;
}

SaveEnd FrameJob::Save(const QString &path, const FrameStep &step,
                       const std::function<ByteArray(const GoOn &)> &make)
{
    ByteArray file;
    if (!Run(step, [&](const GoOn &goOn) { file = make(goOn); }))
        return SaveEnd::Stopped;
    if (file.empty())
        return SaveEnd::TooLarge;
    return WriteFileBytes(path, file) ? SaveEnd::Saved : SaveEnd::Failed;
}

bool FrameJob::AddFrames(std::vector<FrameBuf> frames, const QStringList &names, const FrameStep &step,
                         const std::function<void(FrameBuf, const QString &)> &add)
{
    if (IsBusy())
        return false;
    return Run(step, [&](const GoOn &goOn) {
        const auto count = std::int32_t(frames.size());
        for (std::int32_t i = 0; i < count; ++i) {
            add(std::move(frames[std::size_t(i)]), names.value(i));
            if (!goOn(i + 1, count))
                return;
        }
    });
}

bool FrameJob::AddFiles(const QStringList &paths, const FrameStep &step,
                        const std::function<bool(const QString &)> &add)
{
    if (IsBusy())
        return false;
    bool areAllAdded = true;
    Run(step, [&](const GoOn &goOn) {
        std::int32_t done = 0;
        for (const QString &path : paths) {
            if (!add(path) && FileExists(path))
                areAllAdded = false;
            if (!goOn(++done, std::int32_t(paths.size())))
                return;
        }
    });
    return areAllAdded;
}

} // namespace wb
