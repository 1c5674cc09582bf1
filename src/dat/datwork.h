// What hears how far reading or writing a DAT is, and what may end reading it.
#pragma once

#include "common/progress.h"
#include "services/abortflag.h"

namespace wb
{

struct DatWork {
    Progress *Bar = nullptr;
    const AbortFlag *Abort = nullptr;
    std::int64_t MemoryLimit = 0; // bytes for the document that is read; 0: half of the machine's free memory

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
