// A progress bar on standard error, in the last row of the terminal that it goes to.
#pragma once

#include "common/progress.h"

#include <chrono>

namespace wb::cli
{

class TerminalProgress : public Progress
{
public:
    // Shows nothing when `isQuiet`, or when standard error goes to no terminal.
    explicit TerminalProgress(bool isQuiet);

    void ProgressStart(std::int32_t maximum, const QString &text) override;
    void ProgressStep(std::int32_t value, const QString &text) override;
    void ProgressWait() override {} // nothing can come
    void ProgressClear() override { Hide(); }

    // Clears the row until the next step, for a line that may go to the same terminal.
    void Hide();

private:
    bool m_isShown;
    bool m_isDrawn = false;
    std::int32_t m_maximum = 1;
    std::chrono::steady_clock::time_point m_nextDrawing;
};

} // namespace wb::cli
