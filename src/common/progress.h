// How a job tells how far it is.
#pragma once

#include <QString>
#include <cstdint>

namespace wb
{

// Whoever starts a job gives it one of these. Start, Step and Wait let pending events run, so any handler may
// run inside them: a caller trusts nothing afterwards that an event could have changed.
class Progress
{
public:
    Progress() = default;
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;
    virtual ~Progress() = default;

    // A job of `maximum` items begins; `text` is what the status shows. A handler that runs inside another
    // job may begin one of its own, which is over before the other goes on.
    virtual void ProgressStart(std::int32_t maximum, const QString &text) = 0;

    // `value` items are done.
    virtual void ProgressStep(std::int32_t value, const QString &text) = 0;

    // Gives the time to others until an event has come, for a job that can do nothing before.
    virtual void ProgressWait() = 0;

    // The job is over: value 0, maximum 1, no text.
    virtual void ProgressClear() = 0;
};

} // namespace wb
