#include "cli/joboutput.h"

#include "cli/command.h"
#include "platform/terminal.h"

#include <cstdio>

namespace wb::cli
{

JobOutput::JobOutput(const QCommandLineParser &parser, const QString &target)
    : m_bar(IsQuiet(parser)), m_target(target), m_isLogOnTerminal(TerminalColumns(stdout) > 0)
{
}

JobReport JobOutput::Report()
{
    return {[this](const QString &line) { PrintLog(line); }, [](const QString &) {},
            [this](const QString &text) { PrintError(text); }};
}

int JobOutput::Status(JobEnd end) const
{
    return end == JobEnd::Done && !m_isPartlyDone ? Done : Failed;
}

void JobOutput::PrintLog(const QString &line)
{
    if (m_isFailed) // told already, in the user's words
        return;
    m_isPartlyDone = m_isPartlyDone || line.startsWith(QStringLiteral("ERR: ")) ||
                     line.endsWith(QStringLiteral(" (Ошибка чтения файла)"));
    if (m_isLogOnTerminal)
        m_bar.Hide();
    PrintLine(line);
    std::fflush(stdout);
}

// A box says "Invalid path.".
void JobOutput::PrintError(const QString &text)
{
    m_isFailed = true;
    m_bar.Hide();
    const QString reason = text.left(1).toLower() + text.mid(1).chopped(text.endsWith(u'.') ? 1 : 0);
    Fail(m_target, QStringLiteral("can't be written: ") + reason);
}

} // namespace wb::cli
