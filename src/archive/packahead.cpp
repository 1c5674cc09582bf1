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
// In an archive of its own, whose offsets are 32-bit.
constexpr std::int64_t LargestFile = std::numeric_limits<std::int32_t>::max() - std::int64_t(LengthSize) -
                                     PkgHeaderSize - PkgDirectoryHeaderSize - PkgRecordSize;

std::int64_t CostOf(const PackItem &item)
{
    return item.Entry.Type == PkgPacked ? item.Size * 2 + item.Size / 50 : item.Size;
}

// In all about three times the largest file, or a little: the one being written takes twice its size. One
// that no archive can hold isn't read, and counts for nothing.
std::int64_t BudgetFor(const std::vector<const PackItem *> &files)
{
    std::int64_t largest = 0;
    for (const PackItem *file : files)
        if (file->Size <= LargestFile)
            largest = std::max(largest, file->Size);
    return std::max(SmallBudget, largest * 3 - SmallBudget);
}

using State = PackedFile::State;

// Room for the length, then the file's bytes. A file that is cut short meanwhile can't be read.
State ReadBehindLead(const std::string &path, ByteArray &bytes)
{
    InputFile file;
    if (file.Open(path) != FileError::None)
        return State::Unreadable;
    if (file.Size() > LargestFile)
        return State::TooLong;
    bytes.resize(std::size_t(file.Size()) + LengthSize);
    const std::size_t count = file.ReadAt(0, std::span(bytes).subspan(LengthSize));
    return count + LengthSize == bytes.size() ? State::Whole : State::Unreadable;
}

} // namespace

struct PackAhead::Waiting {
    std::int64_t cost = 0;
    State state = State::Whole;
    ByteArray bytes;                       // behind the room for their length
    std::unique_ptr<ZlChunkPacker> packer; // when it is compressed
    std::vector<bool> done;                // by chunk
    int claimed = 0;                       // chunks that somebody took

    bool IsClaimed() const { return claimed == int(done.size()); }
};

PackAhead::PackAhead(const PackPlan &plan, int threads) : m_plan(plan), m_budget(BudgetFor(plan.Files()))
{
    m_workers.Start(threads - 1, [this] { Work(); });
}

PackAhead::~PackAhead()
{
    {
        const std::lock_guard lock(m_mutex);
        m_stopping = true;
    }
    m_chunkWaits.notify_all();
    m_workers.Join();
}

PackedFile PackAhead::Next(const std::function<void()> &yield)
{
    ReadAhead();
    Waiting &file = *m_waiting.front();
    for (int chunk = 0; chunk < int(file.done.size()); ++chunk) {
        AwaitChunk(file, chunk);
        yield();
    }
    PackedFile packed = Result(file);
    m_held -= file.cost;
    const std::lock_guard lock(m_mutex);
    m_waiting.pop_front();
    m_unclaimed -= m_unclaimed > 0 ? 1 : 0;
    return packed;
}

PackedFile PackAhead::Result(Waiting &file)
{
    const auto size = std::int64_t(file.bytes.size()) - std::int64_t(LengthSize);
    const std::int64_t length = file.packer != nullptr ? file.packer->StreamLength() : size;
    if (file.state != State::Whole || (size > 0 && length == 0))
        return {file.state == State::TooLong ? State::TooLong : State::Unreadable, 0, {}};
    if (length > LargestFile)
        return {State::TooLong, 0, {}};
    if (size == 0)
        return {};
    PackedFile packed;
    packed.Size = static_cast<std::int32_t>(size);
    packed.Bytes = file.packer != nullptr ? file.packer->TakeStream() : std::move(file.bytes);
    PutLong(packed.Bytes, 0, static_cast<std::int32_t>(length));
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
        file->state = ReadBehindLead(item.Native, file->bytes);
        const bool isCompressed = item.Entry.Type == PkgPacked && file->bytes.size() > LengthSize;
        if (file->state == State::Whole && isCompressed) {
            file->packer =
                std::make_unique<ZlChunkPacker>(ByteView(file->bytes).subspan(LengthSize), LengthSize);
            file->done.resize(std::size_t(file->packer->ChunkCount()));
        }
    } catch (const std::bad_alloc &) {
        *file = {file->cost, State::Unreadable, {}, nullptr, {}, 0};
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
