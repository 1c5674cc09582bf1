// Reads and expands the files of an archive ahead of the one who writes them, with a few threads.
#pragma once

#include "archive/pkgreader.h"
#include "archive/workers.h"

#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <vector>

namespace wb
{

struct UnpackedFile {
    ByteArray Bytes;      // as many as can be read
    bool IsWhole = false; // all are there
};

class UnpackAhead
{
public:
    // `threads` expand, the caller's among them. `files` outlives this.
    UnpackAhead(PkgHandle archive, std::vector<const PkgEntry *> files, int threads);
    UnpackAhead(const UnpackAhead &) = delete;
    UnpackAhead &operator=(const UnpackAhead &) = delete;
    ~UnpackAhead();

    // The next of the files, in their order.
    UnpackedFile Next();

private:
    struct Waiting {
        const PkgEntry *entry;
        UnpackedFile file;
        bool isDone = false;
    };

    void ReadAhead();
    bool HasUnclaimed() const { return m_unclaimed < m_waiting.size(); }
    void ExpandNext(std::unique_lock<std::mutex> &lock);
    void Work();

    PkgHandle m_archive;
    std::vector<const PkgEntry *> m_files;
    std::size_t m_nextFile = 0; // to be read
    std::int64_t m_held = 0;    // bytes of all files that wait

    std::mutex m_mutex; // guards what follows
    std::condition_variable m_fileWaits;
    std::condition_variable m_fileDone;
    std::deque<std::unique_ptr<Waiting>> m_waiting;
    std::size_t m_unclaimed = 0; // the first waiting file that nobody took
    bool m_stopping = false;
    Workers m_workers;
};

} // namespace wb
