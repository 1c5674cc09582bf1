#include "cli/terminalprogress.h"

#include "platform/terminal.h"

#include <algorithm>
#include <cstdio>

namespace wb::cli
{

namespace
{

constexpr std::chrono::milliseconds DrawingInterval(50);
constexpr std::int32_t BarWidth = 24;
constexpr char ClearedRow[] = "\r\x1b[K";

} // namespace

TerminalProgress::TerminalProgress(bool isQuiet) : m_isShown(!isQuiet && TerminalColumns(stderr) > 0) {}

void TerminalProgress::ProgressStart(std::int32_t maximum, const QString &text)
{
    m_maximum = std::max(maximum, 1);
    m_nextDrawing = {};
    ProgressStep(0, text);
}

void TerminalProgress::ProgressStep(std::int32_t value, const QString &text)
{
    const auto now = std::chrono::steady_clock::now();
    if (!m_isShown || now < m_nextDrawing)
        return;
    m_nextDrawing = now + DrawingInterval;
    m_isDrawn = true;
    const double done = std::clamp(double(value) / m_maximum, 0.0, 1.0);
    const QString bar = QString(int(done * BarWidth), u'#').leftJustified(BarWidth, u'.');
    const QString row = QStringLiteral("[%1] %2% %3").arg(bar).arg(int(done * 100), 3).arg(text);
    // A row that is full to its last column would go on in the next one.
    std::fprintf(stderr, "%s%s", ClearedRow,
                 row.left(std::max(TerminalColumns(stderr) - 1, 0)).toUtf8().constData());
}

void TerminalProgress::Hide()
{
    if (m_isDrawn)
        std::fputs(ClearedRow, stderr);
    m_isDrawn = false;
}

} // namespace wb::cli
