#include "anim/framejob.h"

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

} // namespace wb
