#include "archive/archivejob.h"

#include <algorithm>
#include <limits>

namespace wb
{

namespace
{

// Bytes go by kilobytes, so that the largest archive's fit into the bar; an item counts as one more.
std::int32_t Units(std::int32_t items, std::int64_t bytes)
{
    return static_cast<std::int32_t>(
        std::min<std::int64_t>(items + bytes / 1024, std::numeric_limits<std::int32_t>::max()));
}

} // namespace

ArchiveJob::Running::Running(ArchiveJob &job, const JobReport &report) : m_job(job)
{
    m_job.m_report = &report;
    m_job.m_busy = true;
    m_job.m_abort = m_job.m_paused = m_job.m_failed = false;
    m_job.m_itemsDone = 0;
    m_job.m_bytesDone = 0;
}

ArchiveJob::Running::~Running()
{
    m_job.ClearProgress();
    m_job.ShowWork({});
    m_job.m_busy = m_job.m_abort = m_job.m_paused = false;
    m_job.m_report = nullptr;
}

void ArchiveJob::Fail(const QString &boxText)
{
    m_failed = true;
    if (!boxText.isEmpty())
        m_report->Error(boxText);
}

void ArchiveJob::ClearProgress()
{
    if (m_hasProgress)
        m_progress.ProgressClear();
    m_hasProgress = false;
}

void ArchiveJob::StartProgress(const QString &caption, std::int32_t items, std::int64_t bytes)
{
    ClearProgress();
    m_hasProgress = true;
    m_caption = caption;
    m_items = items;
    m_progress.ProgressStart(std::max(Units(items, bytes), 1), caption);
}

void ArchiveJob::Advance(std::int32_t items, std::int64_t bytes)
{
    m_itemsDone += items;
    m_bytesDone += bytes;
}

void ArchiveJob::Yield()
{
    m_progress.ProgressStep(Units(m_itemsDone, m_bytesDone),
                            m_items == 0
                                ? m_caption
                                : QStringLiteral("%1: %2 / %3").arg(m_caption).arg(m_itemsDone).arg(m_items));
    while (m_paused && !m_abort)
        m_progress.ProgressWait();
}

} // namespace wb
