#include "dat/datreader.h"

#include "archive/zlblock.h"
#include "common/bytes.h"
#include "common/files.h"

#include <QtEndian>

#include <algorithm>
#include <bit>
#include <new>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace wb
{

namespace
{

constexpr std::int64_t BlockHeadSize = 5;
constexpr std::int64_t NodeHeadSize = 9;
constexpr std::int64_t TerminatorSize = 2;

// The smallest children there are. One byte less does when it is all that is there of the last text.
constexpr std::int64_t SmallestNode = NodeHeadSize + 2 * TerminatorSize;
constexpr std::int64_t SmallestPair = 1 + 2 * TerminatorSize;

// More steps than the eye can see would cost more than reading.
constexpr std::int64_t StepSize = 256 * 1024;

// How many units there are before one of zero, or in all.
std::int64_t UnitsBeforeZero(const std::uint8_t *text, std::int64_t units)
{
    std::int64_t unit = 0;
#ifdef __SSE2__
    for (; unit + 8 <= units; unit += 8) {
        const __m128i eight = _mm_loadu_si128(reinterpret_cast<const __m128i *>(text + 2 * unit));
        const auto zeroes = unsigned(_mm_movemask_epi8(_mm_cmpeq_epi16(eight, _mm_setzero_si128())));
        if (zeroes != 0)
            return unit + std::countr_zero(zeroes) / 2;
    }
#endif
    while (unit < units && (text[2 * unit] | text[2 * unit + 1]) != 0)
        ++unit;
    return unit;
}

class BlockReader
{
public:
    BlockReader(ByteView bytes, std::int64_t position, DatNodes &items, MemoryBudget budget,
                const DatWork &work)
        : m_bytes(bytes), m_position(position), m_items(items), m_budget(budget), m_work(work)
    {
    }

    std::int64_t Position() const { return m_position; }

    // Reads one child after another, whatever depth it lies at: the depth is the file's to choose. While a
    // block is open, its End counts the children that are left.
    bool Read()
    {
        if (!m_budget.Take(sizeof(DatNode)))
            return false;
        m_items.Append();
        if (!OpenBlock(0))
            return false;
        while (m_block >= 0) {
            if (m_items[m_block].End == 0)
                CloseBlock();
            else if (!ReadChild())
                return false;
            if ((m_position >= m_nextStep || m_block < 0) && !Step())
                return false;
        }
        return true;
    }

private:
    std::int64_t Remaining() const { return std::int64_t(m_bytes.size()) - m_position; }
    std::uint8_t Byte() { return m_bytes[std::size_t(m_position++)]; }
    std::int32_t Long()
    {
        m_position += 4;
        return qFromLittleEndian<std::int32_t>(m_bytes.data() + m_position - 4);
    }

    // A text that something must follow.
    bool ReadName(DatText &name)
    {
        name = DatReadText(m_bytes, m_position);
        return std::int64_t(name.Behind()) == m_position && Remaining() > 0;
    }

    bool OpenBlock(std::int32_t item)
    {
        if (Remaining() < BlockHeadSize)
            return false;
        const std::uint8_t kind = Byte();
        const std::int32_t count = Long();
        const std::int64_t smallest = kind == DatNodeList ? SmallestNode : SmallestPair;
        if (kind > DatNodeList || count < 0 || count * smallest > Remaining() + 1)
            return false;
        DatNode &node = m_items[item];
        node.Kind = DatKind(kind);
        node.Count = count;
        node.OpensBlock = true;
        node.End = count;
        m_block = item;
        return true;
    }

    void CloseBlock()
    {
        DatNode &block = m_items[m_block];
        block.End = m_items.Count();
        m_block = block.Parent;
    }

    bool Step()
    {
        m_nextStep = m_position + StepSize;
        m_work.Step(m_position, QStringLiteral("Чтение данных ..."));
        return !m_work.IsAborted();
    }

    bool ReadChild()
    {
        DatNode &block = m_items[m_block];
        --block.End;
        const bool isNode = block.Kind == DatNodeList;
        if (Remaining() < (isNode ? NodeHeadSize : 1) || !m_budget.Take(sizeof(DatNode)))
            return false;
        const std::int32_t index = m_items.Count();
        DatNode &node = m_items.Append();
        node.Parent = m_block;
        node.End = index + 1;
        if (isNode) {
            node.Id = Long();
            node.Aux = Long();
        }
        node.Type = Byte();
        if (!ReadName(node.Name) || (isNode && node.Type != DatValue && node.Type != DatBlock))
            return false;
        if (isNode && node.Type == DatBlock)
            return OpenBlock(index);
        node.Value = DatReadText(m_bytes, m_position);
        return true;
    }

    ByteView m_bytes;
    std::int64_t m_position;
    DatNodes &m_items;
    MemoryBudget m_budget;
    const DatWork &m_work;
    std::int32_t m_block = -1; // the innermost that is open
    std::int64_t m_nextStep = StepSize;
};

// Drops what lies behind the root block, and gives the last text the terminator that it may lack.
void EndBytes(ByteArray &bytes, std::int64_t position, const DatNode &last)
{
    bytes.resize(last.OpensBlock ? std::size_t(position) : last.Value.End());
    if (!last.OpensBlock)
        bytes.resize(last.Value.Behind(), 0);
}

// The plain form of a compressed file; nothing when it is damaged or takes too much memory.
ByteArray Expanded(ByteView file, MemoryBudget &budget, const DatWork &work)
{
    ByteArray plain;
    work.Start(std::int64_t(file.size()), QStringLiteral("Распаковка данных ..."));
    const std::int32_t length = file.size() < ZlHeaderSize ? 0 : GetLong(file, 4);
    if (length <= 0 || !budget.Take(length) || !ZlBlockUnpack(plain, file, -1, 0))
        plain.clear();
    work.Clear();
    return plain;
}

DatTree Parse(ByteArray bytes, const DatWork &work)
{
    MemoryBudget budget(work.MemoryLimit);
    budget.LimitTo(DatMemoryFor(std::int64_t(bytes.size())));
    const bool isZL = bytes.size() >= 4 && GetLong(bytes, 0) == ZlTag01;
    if (isZL)
        bytes = Expanded(bytes, budget, work);
    if (bytes.empty())
        return {};
    work.Start(std::int64_t(bytes.size()), {});
    std::int64_t position = 0;
    DatNodes items;
    const bool isWhole = DatReadBlock(bytes, position, items, budget, work);
    work.Clear();
    if (!isWhole)
        return {};
    EndBytes(bytes, position, items[items.Count() - 1]);
    return {std::move(bytes), std::move(items), isZL};
}

} // namespace

DatText DatReadText(ByteView bytes, std::int64_t &position)
{
    const std::int64_t there = std::int64_t(bytes.size()) - position;
    const std::int64_t units = UnitsBeforeZero(bytes.data() + position, there / 2);
    const DatText text{std::uint32_t(position), std::uint32_t(units)};
    position = std::min<std::int64_t>(text.Behind(), std::int64_t(bytes.size()));
    return text;
}

bool DatReadBlock(ByteView bytes, std::int64_t &position, DatNodes &items, MemoryBudget budget,
                  const DatWork &work)
{
    BlockReader reader(bytes, position, items, budget, work);
    const bool isWhole = reader.Read();
    position = reader.Position();
    return isWhole;
}

DatTree DatParse(ByteArray bytes, const DatWork &work)
{
    try {
        return Parse(std::move(bytes), work);
    } catch (const std::bad_alloc &) {
        work.Clear();
        return {};
    }
}

DatTree DatLoadFile(const QString &path, const DatWork &work)
{
    ByteArray bytes;
    ReadFileBytes(path, bytes);
    return DatParse(std::move(bytes), work);
}

} // namespace wb
