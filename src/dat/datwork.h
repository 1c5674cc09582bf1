// What hears how far reading or writing a DAT is, and may end reading it.
#pragma once

#include "common/progress.h"
#include "services/abortflag.h"

namespace wb
{

struct DatWork {
    Progress *Bar = nullptr;
    const AbortFlag *Abort = nullptr;

    void Start(std::int64_t maximum, const QString &text) const
    {
        if (Bar != nullptr)
            Bar->ProgressStart(std::int32_t(maximum), text);
    }
    void Step(std::int64_t value, const QString &text) const
    {
        if (Bar != nullptr)
            Bar->ProgressStep(std::int32_t(value), text);
    }
    void Clear() const
    {
        if (Bar != nullptr)
            Bar->ProgressClear();
    }
    bool IsAborted() const { return Abort != nullptr && Abort->IsSet(); }
};

} // namespace wb
