// What packing and unpacking have in common: one job at a time, which the handlers that run while it lets
// events through can pause and abort.
#pragma once

#include "common/progress.h"

#include <QString>

#include <cstdint>
#include <functional>

namespace wb
{

enum class JobEnd { Done, Aborted, Failed };

// Whom a job tells what it does. Each may be called at any time while the job runs.
struct JobReport {
    std::function<void(const QString &line)> Log;
    std::function<void(const QString &path)> Work;  // the file being worked on; empty when the job ends
    std::function<void(const QString &text)> Error; // what an error box says
};

class ArchiveJob
{
public:
    // `progress` shows the advance, in kilobytes and entries, and lets events run.
    explicit ArchiveJob(Progress &progress) : m_progress(progress) {}
    ArchiveJob(const ArchiveJob &) = delete;
    ArchiveJob &operator=(const ArchiveJob &) = delete;

    bool IsBusy() const { return m_busy; }
    bool IsPaused() const { return m_paused; }

    // Makes a running job end at its next item, also a paused one.
    void Abort() { m_abort = m_busy; }

    // Makes a running job wait at its next yield, or go on. No job stays paused when it ends.
    void TogglePause() { m_paused = m_busy && !m_paused; }

protected:
    // Holds a job's state from its start to its end, whatever way it ends.
    class Running
    {
    public:
        Running(ArchiveJob &job, const JobReport &report);
        Running(const Running &) = delete;
        Running &operator=(const Running &) = delete;
        ~Running();

    private:
        ArchiveJob &m_job;
    };

    bool IsAborted() const { return m_abort; }
    bool HasFailed() const { return m_failed; }
    JobEnd End() const { return m_failed ? JobEnd::Failed : m_abort ? JobEnd::Aborted : JobEnd::Done; }

    // The job can't go on: says so in a box, unless there is nothing to say.
    void Fail(const QString &boxText);

    void Log(const QString &line) const { m_report->Log(line); }
    void ShowWork(const QString &path) const { m_report->Work(path); }

    // The work ahead: so many items and bytes. `caption` stands in front of the numbers, "Распаковка: 3 /
    // 10".
    void StartProgress(const QString &caption, std::int32_t items, std::int64_t bytes);
    void Advance(std::int32_t items, std::int64_t bytes);

    // Lets events run, and waits while the job is paused.
    void Yield();

private:
    void ClearProgress();

    Progress &m_progress;
    const JobReport *m_report = nullptr; // while busy
    bool m_busy = false;
    bool m_abort = false;
    bool m_paused = false;
    bool m_failed = false;
    bool m_hasProgress = false; // was started
    QString m_caption;
    std::int32_t m_items = 0;
    std::int32_t m_itemsDone = 0;
    std::int64_t m_bytesDone = 0;
};

} // namespace wb
