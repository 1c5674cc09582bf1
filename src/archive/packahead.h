// Reads and compresses the files of a pack job ahead of the one who writes them, with a few threads.
#pragma once

#include "archive/packplan.h"
#include "archive/workers.h"
#include "archive/zlblock.h"

#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

namespace wb
{

// A file as the archive takes it.
struct PackedFile {
    enum class State {
        Whole,
        Unreadable, // or memory did not suffice
        TooLong     // for an archive
    };
    State Outcome = State::Whole;
    std::int32_t Size = 0; // of the file; 0 unless it is whole
    ByteArray Bytes;       // its length or its stream's, then its bytes or the stream; empty when Size is 0
};

class PackAhead
{
public:
    // `threads` compress, the caller's among them. What is read ahead is kept small against the largest file.
    PackAhead(const PackPlan &plan, int threads);
    PackAhead(const PackAhead &) = delete;
    PackAhead &operator=(const PackAhead &) = delete;
    ~PackAhead();

    // The next of the plan's files, in their order. `yield` is called after each chunk of a compressed one.
    PackedFile Next(const std::function<void()> &yield);

private:
    struct Waiting;
    struct Chunk {
        Waiting *file = nullptr;
        int number = 0;
    };

    static PackedFile Result(Waiting &file);
    void ReadAhead();
    void Admit(const PackItem &item);
    void AwaitChunk(const Waiting &file, int chunk);
    bool HasUnclaimed();
    Chunk Claim();
    void Pack(const Chunk &chunk, std::unique_lock<std::mutex> &lock);
    void Work();

    const PackPlan &m_plan;
    std::size_t m_nextFile = 0; // of the plan's, to be read
    std::int64_t m_budget;
    std::int64_t m_held = 0; // bytes of all files that wait

    std::mutex m_mutex; // guards what follows, and the state of the chunks
    std::condition_variable m_chunkWaits;
    std::condition_variable m_chunkDone;
    std::deque<std::unique_ptr<Waiting>> m_waiting;
    std::size_t m_unclaimed = 0; // the first waiting file that may have a chunk nobody took
    bool m_stopping = false;
    Workers m_workers;
};

} // namespace wb
