#include "anim/framejob.h"

#include "common/files.h"

#include <QScopedValueRollback>

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
