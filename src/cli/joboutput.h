// What the user sees of an archive job.
#pragma once

#include "archive/archivejob.h"
#include "cli/terminalprogress.h"

#include <QCommandLineParser>

namespace wb::cli
{

class JobOutput
{
public:
    // `target` is what the job writes to, as the user named it.
    JobOutput(const QCommandLineParser &parser, const QString &target);

    Progress &Bar() { return m_bar; }

    // Prints the job's log lines as they come.
    JobReport Report();

    // The exit status after the job: Done when all was done.
    int Status(JobEnd end) const;

private:
    void PrintLog(const QString &line);
    void PrintError(const QString &text);

    TerminalProgress m_bar;
    QString m_target;
    bool m_isLogOnTerminal;
    bool m_isPartlyDone = false;
    bool m_isFailed = false;
};

} // namespace wb::cli
