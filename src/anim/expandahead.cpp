#include "anim/expandahead.h"

#include "archive/zlblock.h"
#include "common/bytes.h"

#include <utility>

namespace wb
{

namespace
{

// What a slot holds on to. A block that says more is expanded when its turn has come.
constexpr std::int32_t MostAhead = 16 << 20;

std::int32_t StatedLength(ByteView file, const ZlBlockPlace &block)
{
    ByteReader reader(file);
    reader.Seek(block.Offset);
    reader.Long(); // the tag
    return reader.Long();
}

} // namespace

ExpandAhead::ExpandAhead(ByteView file, std::vector<ZlBlockPlace> blocks, int threads)
    : m_file(file), m_blocks(std::move(blocks)), m_slots(std::size_t(threads) * 2)
{
    if (m_blocks.size() > 1)
        m_workers.Start(threads - 1, [this] { Work(); });
}

ExpandAhead::~ExpandAhead()
{
    {
        const std::lock_guard lock(m_mutex);
        m_stopping = true;
    }
    m_blockWaits.notify_all();
    m_workers.Join();
}

ByteView ExpandAhead::Front()
{
    std::unique_lock lock(m_mutex);
    const Slot &slot = SlotOf(m_front);
    while (!slot.isDone) {
        if (m_unclaimed == m_front || CanWorkAhead())
            ExpandNext(lock);
        else
            m_blockDone.wait(lock);
    }
    return slot.bytes;
}

void ExpandAhead::Pop()
{
    {
        const std::lock_guard lock(m_mutex);
        Slot &slot = SlotOf(m_front++);
        slot.isDone = false;
        if (slot.bytes.capacity() > std::size_t(MostAhead))
            slot.bytes = {};
    }
    m_blockWaits.notify_one();
}

bool ExpandAhead::CanWorkAhead() const
{
    return m_unclaimed < m_blocks.size() && m_unclaimed < m_front + m_slots.size() &&
           StatedLength(m_file, m_blocks[m_unclaimed]) <= MostAhead;
}

void ExpandAhead::ExpandNext(std::unique_lock<std::mutex> &lock)
{
    const ZlBlockPlace &block = m_blocks[m_unclaimed];
    Slot &slot = SlotOf(m_unclaimed++);
    lock.unlock();
    ZlBlockUnpack(slot.bytes, m_file, block.Length, block.Offset);
    lock.lock();
    slot.isDone = true;
    m_blockDone.notify_one();
}

void ExpandAhead::Work()
{
    std::unique_lock lock(m_mutex);
    while (!m_stopping) {
        if (CanWorkAhead())
            ExpandNext(lock);
        else
            m_blockWaits.wait(lock);
    }
}

} // namespace wb
