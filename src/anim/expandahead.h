// Expands ZL blocks ahead of the one who uses them, with a few threads.
#pragma once

#include "archive/workers.h"
#include "common/bytearray.h"

#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <vector>

namespace wb
{

struct ZlBlockPlace {
    std::int32_t Offset = 0;
    std::int32_t Length = 0;
};

class ExpandAhead
{
public:
    // `threads` expand, the caller's among them. Keeps the view of `file`, which has 4 bytes at every place.
    ExpandAhead(ByteView file, std::vector<ZlBlockPlace> blocks, int threads);
    ExpandAhead(const ExpandAhead &) = delete;
    ExpandAhead &operator=(const ExpandAhead &) = delete;
    ~ExpandAhead();

    // What the first block that was not popped expands to, as far as it goes; until it is popped.
    ByteView Front();
    void Pop();

private:
    struct Slot {
        ByteArray bytes;
        bool isDone = false;
    };

    Slot &SlotOf(std::size_t block) { return m_slots[block % m_slots.size()]; }
    bool CanWorkAhead() const;
    void ExpandNext(std::unique_lock<std::mutex> &lock);
    void Work();

    const ByteView m_file;
    const std::vector<ZlBlockPlace> m_blocks;

    std::mutex m_mutex; // guards what follows, but for the bytes of a slot while its block is expanded
    std::condition_variable m_blockWaits;
    std::condition_variable m_blockDone;
    // For the blocks from the front on, in turn: memory is kept from block to block.
    std::vector<Slot> m_slots;
    std::size_t m_front = 0;
    std::size_t m_unclaimed = 0; // the first block that nobody took
    bool m_stopping = false;
    Workers m_workers;
};

} // namespace wb
