#include "archive/packahead.h"

#include "common/bytes.h"
#include "platform/fileio.h"

#include <limits>

namespace wb
{

namespace
{

constexpr std::int64_t SmallBudget = 24 << 20;
constexpr std::size_t MostWaiting = 512; // small files cost more than their bytes
constexpr std::size_t LengthSize = 4;
constexpr std::int64_t LargestFile = std::numeric_limits<std::int32_t>::max() - std::int64_t(LengthSize);

std::int64_t CostOf(const PackItem &item)
{
    return item.Entry.Type == PkgPacked ? item.Size * 2 + item.Size / 50 : item.Size;
}

// Room for the length, then the file's bytes; nothing when it is empty or can't be read.
ByteArray ReadBehindLead(const std::string &path)
{
    InputFile file;
    if (file.Open(path) != FileError::None || file.Size() > LargestFile)
        return {};
    ByteArray bytes(std::size_t(file.Size()) + LengthSize);
    const std::size_t count = file.ReadAt(0, std::span(bytes).subspan(LengthSize));
    bytes.resize(count == 0 ? 0 : count + LengthSize);
    return bytes;
}

} // namespace

struct PackAhead::Waiting {
    std::int64_t cost = 0;
    ByteArray bytes;                       // behind the room for their length
    std::unique_ptr<ZlChunkPacker> packer; // when it is compressed
    std::vector<bool> done;                // by chunk
    int claimed = 0;                       // chunks that somebody took

    bool IsClaimed() const { return claimed == int(done.size()); }
};

// In all about three times the largest file, or a little: the one being written takes twice its size.
PackAhead::PackAhead(const PackPlan &plan, int threads)
    : m_plan(plan), m_budget(std::max(SmallBudget, plan.LargestFile() * 3 - SmallBudget))
{
    for (int i = 1; i < threads; ++i)
        m_workers.emplace_back([this] { Work(); });
}

PackAhead::~PackAhead()
{
    {
        const std::lock_guard lock(m_mutex);
        m_stopping = true;
    }
    m_chunkWaits.notify_all();
    for (std::thread &worker : m_workers)
        worker.join();
}

PackedFile PackAhead::Next(const std::function<void()> &yield)
{
    ReadAhead();
    Waiting &file = *m_waiting.front();
    PackedFile packed;
    const std::int32_t size = file.bytes.empty() ? 0 : ByteCount(file.bytes) - std::int32_t(LengthSize);
    for (int chunk = 0; chunk < int(file.done.size()); ++chunk) {
        AwaitChunk(file, chunk);
        yield();
    }
    packed.Bytes = file.packer != nullptr ? file.packer->TakeStream() : std::move(file.bytes);
    if (!packed.Bytes.empty()) {
        packed.Size = size;
        PutLong(packed.Bytes, 0, ByteCount(packed.Bytes) - std::int32_t(LengthSize));
    }
    m_held -= file.cost;
    const std::lock_guard lock(m_mutex);
    m_waiting.pop_front();
    m_unclaimed -= m_unclaimed > 0 ? 1 : 0;
    return packed;
}

void PackAhead::ReadAhead()
{
    const std::vector<const PackItem *> &files = m_plan.Files();
    while (m_nextFile < files.size() && m_waiting.size() < MostWaiting &&
           (m_waiting.empty() || m_held + CostOf(*files[m_nextFile]) <= m_budget))
        Admit(*files[m_nextFile++]);
}

void PackAhead::Admit(const PackItem &item)
{
    auto file = std::make_unique<Waiting>();
    file->cost = CostOf(item);
    try {
        file->bytes = ReadBehindLead(item.Native);
        if (item.Entry.Type == PkgPacked && !file->bytes.empty()) {
            file->packer =
                std::make_unique<ZlChunkPacker>(ByteView(file->bytes).subspan(LengthSize), LengthSize);
            file->done.resize(std::size_t(file->packer->ChunkCount()));
        }
    } catch (const std::bad_alloc &) {
        *file = {file->cost, {}, nullptr, {}, 0};
    }
    m_held += file->cost;
    {
        const std::lock_guard lock(m_mutex);
        m_waiting.push_back(std::move(file));
    }
    m_chunkWaits.notify_all();
}

// Instead of waiting, the caller packs what is next itself.
void PackAhead::AwaitChunk(const Waiting &file, int chunk)
{
    std::unique_lock lock(m_mutex);
    while (!file.done[std::size_t(chunk)]) {
        if (HasUnclaimed())
            Pack(Claim(), lock);
        else
            m_chunkDone.wait(lock);
    }
}

bool PackAhead::HasUnclaimed()
{
    while (m_unclaimed < m_waiting.size() && m_waiting[m_unclaimed]->IsClaimed())
        ++m_unclaimed;
    return m_unclaimed < m_waiting.size();
}

PackAhead::Chunk PackAhead::Claim()
{
    Waiting *file = m_waiting[m_unclaimed].get();
    return {file, file->claimed++};
}

void PackAhead::Pack(const Chunk &chunk, std::unique_lock<std::mutex> &lock)
{
    lock.unlock();
    chunk.file->packer->PackChunk(chunk.number);
    lock.lock();
    chunk.file->done[std::size_t(chunk.number)] = true;
    m_chunkDone.notify_all();
}

void PackAhead::Work()
{
    std::unique_lock lock(m_mutex);
    while (!m_stopping) {
        if (HasUnclaimed())
            Pack(Claim(), lock);
        else
            m_chunkWaits.wait(lock);
    }
}

} // namespace wb
