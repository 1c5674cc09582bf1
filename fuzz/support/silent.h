// Nobody who listens to a job.
#pragma once

#include "archive/archivejob.h"

namespace wb
{

class SilentProgress : public Progress
{
public:
    void ProgressStart(std::int32_t, const QString &) override {}
    void ProgressStep(std::int32_t, const QString &) override {}
    void ProgressWait() override {}
    void ProgressClear() override {}
};

inline JobReport SilentReport()
{
    const auto ignore = [](const QString &) {};
    return {.Log = ignore, .Work = ignore, .Error = ignore};
}

} // namespace wb
