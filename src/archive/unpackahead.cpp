#include "archive/unpackahead.h"

#include <algorithm>

namespace wb
{

namespace
{

constexpr std::int64_t Budget = 16 << 20;
constexpr std::size_t MostWaiting = 512; // small files cost more than their bytes

std::int64_t CostOf(const PkgEntry &entry)
{
    return std::max(entry.Size, 0);
}

} // namespace

UnpackAhead::UnpackAhead(PkgHandle archive, std::vector<const PkgEntry *> files, int threads)
    : m_archive(std::move(archive)), m_files(std::move(files))
{
    m_workers.Start(threads - 1, [this] { Work(); });
}

UnpackAhead::~UnpackAhead()
{
    {
        const std::lock_guard lock(m_mutex);
        m_stopping = true;
    }
    m_fileWaits.notify_all();
    m_workers.Join();
}

UnpackedFile UnpackAhead::Next()
{
    ReadAhead();
    std::unique_lock lock(m_mutex);
    Waiting &front = *m_waiting.front();
    while (!front.isDone) {
        if (HasUnclaimed())
            ExpandNext(lock);
        else
            m_fileDone.wait(lock);
    }
    m_held -= CostOf(*front.entry);
    UnpackedFile file = std::move(front.file);
    m_waiting.pop_front();
    --m_unclaimed;
    return file;
}

void UnpackAhead::ReadAhead()
{
    // Many at a time: workers that wake for each file take longer than a small file does.
    if (m_waiting.size() > MostWaiting / 2)
        return;
    const auto fits = [this](const PkgEntry &entry) { return m_held + CostOf(entry) <= Budget; };
    while (m_nextFile < m_files.size() && m_waiting.size() < MostWaiting &&
           (m_waiting.empty() || fits(*m_files[m_nextFile]))) {
        const PkgEntry *entry = m_files[m_nextFile++];
        m_held += CostOf(*entry);
        const std::lock_guard lock(m_mutex);
        m_waiting.push_back(std::make_unique<Waiting>(Waiting{entry, {}, false}));
        m_fileWaits.notify_one();
    }
}

void UnpackAhead::ExpandNext(std::unique_lock<std::mutex> &lock)
{
    Waiting &waiting = *m_waiting[m_unclaimed++];
    lock.unlock();
    waiting.file.IsWhole = PkgReadEntryData(*m_archive, waiting.file.Bytes, *waiting.entry);
    lock.lock();
    waiting.isDone = true;
    m_fileDone.notify_one();
}

void UnpackAhead::Work()
{
    std::unique_lock lock(m_mutex);
    while (!m_stopping) {
        if (HasUnclaimed())
            ExpandNext(lock);
        else
            m_fileWaits.wait(lock);
    }
}

} // namespace wb
