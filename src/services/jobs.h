// Long jobs run in the handler that started them and let pending events run between their items. This is what
// the rest of the program knows of them: whether one runs, and whether it has been told to stop.
#pragma once

namespace wb
{

class Jobs
{
public:
    // Asks the running job to stop at its next item.
    void Abort() { m_aborted = true; }
    bool Aborted() const { return m_aborted; }
    bool Running() const { return m_running > 0; }

private:
    friend class JobScope;
    int m_running = 0;
    bool m_aborted = false;
};

// Marks a job as running for as long as it lives. The first of nested ones clears an earlier abort.
class JobScope
{
public:
    explicit JobScope(Jobs &jobs) : m_jobs(jobs)
    {
        if (m_jobs.m_running++ == 0)
            m_jobs.m_aborted = false;
    }
    ~JobScope() { --m_jobs.m_running; }
    JobScope(const JobScope &) = delete;
    JobScope &operator=(const JobScope &) = delete;

private:
    Jobs &m_jobs;
};

} // namespace wb
