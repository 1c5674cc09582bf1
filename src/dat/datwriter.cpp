#include "dat/datwriter.h"

#include "archive/zlblock.h"
#include "common/bytes.h"
#include "common/files.h"

#include <QtEndian>

#include <limits>
#include <new>

namespace wb
{

namespace
{

constexpr std::size_t BlockHeadSize = 5;

// A ZL block states its length in 32 bits, and so does its packer the room that it needs at most.
constexpr std::size_t LongestPlain = std::numeric_limits<std::int32_t>::max();
constexpr std::size_t LongestPacked = 2'100'000'000;

std::size_t StartOfBlock(const DatTree &tree, std::int32_t index)
{
    return index == 0 ? 0 : tree.Item(index).Name.Behind();
}

std::size_t EndOfBlock(const DatTree &tree, std::int32_t index)
{
    const std::int32_t last = tree.Item(index).End - 1;
    return tree.Item(last).OpensBlock ? StartOfBlock(tree, last) + BlockHeadSize
                                      : tree.Item(last).Value.Behind();
}

ByteArray Serialize(const DatTree &tree, const DatWork &work)
{
    ByteArray plain;
    if (tree.Count() == 0)
        return plain;
    work.Start(tree.Count(), {});
    std::int32_t index = 0;
    DatWriteBlock(plain, tree, index, work);
    work.Clear();
    if (plain.size() > (tree.IsZL ? LongestPacked : LongestPlain))
        return {};
    if (!tree.IsZL)
        return plain;
    work.Start(tree.Count(), QStringLiteral("Сжатие данных ..."));
    ByteArray packed;
    ZlBlockPack(packed, plain);
    work.Clear();
    const std::int64_t memory = std::int64_t(plain.size()) + tree.Count() * std::int64_t(sizeof(DatNode));
    return memory <= DatMemoryFor(std::int64_t(packed.size())) ? packed : ByteArray();
}

} // namespace

void DatWriteText(ByteArray &bytes, QStringView text)
{
    const std::size_t start = bytes.size();
    bytes.resize(start + 2 * std::size_t(text.size()));
    if (!text.isEmpty()) // which may have no address
        qToLittleEndian<char16_t>(text.utf16(), text.size(), bytes.data() + start);
    bytes.resize(bytes.size() + 2, 0);
}

void DatWriteBlock(ByteArray &bytes, const DatTree &tree, std::int32_t &index, const DatWork &work)
{
    const auto part = [&tree](std::size_t from, std::size_t end) {
        return tree.Bytes().subspan(from, end - from);
    };
    const std::int32_t last = tree.Item(index).End - 1;
    const std::size_t end = EndOfBlock(tree, index);
    std::size_t from = StartOfBlock(tree, index);
    bytes.reserve(bytes.size() + end - from);
    auto change = tree.Changes().upper_bound(index);
    for (; change != tree.Changes().end() && change->first <= last; ++change) {
        const DatText &old = tree.Item(change->first).Value;
        AppendBytes(bytes, part(from, old.At));
        DatWriteText(bytes, change->second);
        from = old.Behind();
    }
    AppendBytes(bytes, part(from, end));
    index = last;
    work.Step(index, QStringLiteral("Запись данных ..."));
}

ByteArray DatSerialize(const DatTree &tree, const DatWork &work)
{
    try {
        return Serialize(tree, work);
    } catch (const std::bad_alloc &) {
        work.Clear();
        return {};
    }
}

bool DatSaveFile(const QString &path, const DatTree &tree, const DatWork &work)
{
    const ByteArray file = DatSerialize(tree, work);
    return !file.empty() && WriteFileBytes(path, file);
}

} // namespace wb
