// A DAT document in memory: named blocks and named texts as one array, each block followed by all that it
// holds. Names and texts stay where they are in the file's bytes.
#pragma once

#include "common/bytearray.h"

#include <QString>

#include <algorithm>
#include <cstdint>
#include <map>
#include <vector>

namespace wb
{

// How the children of a block are stored.
enum DatKind : std::uint8_t { DatPairList = 0, DatNodeList = 1 };

// Children of a pair list have any type and never hold others.
enum DatType : std::uint8_t { DatValue = 1, DatBlock = 2 };

// A text in the bytes: its UTF-16 code units, two bytes each, and behind them a unit of zero.
struct DatText {
    std::uint32_t At = 0;
    std::uint32_t Length = 0; // units

    std::uint32_t End() const { return At + 2 * Length; }
    std::uint32_t Behind() const { return End() + 2; } // its terminator
};

struct DatNode {
    std::int32_t Id = 0;  // of a node list's child
    std::int32_t Aux = 0; // likewise; what it means is not known
    std::int32_t Parent = -1;
    std::int32_t End = 0;   // the index behind all that it holds
    std::int32_t Count = 0; // of children
    DatText Name;           // the root has none
    DatText Value;          // of what opens no block
    DatKind Kind = DatPairList;
    std::uint8_t Type = 0; // the root's is 0
    bool OpensBlock = false;
};

// Nodes in the order in which they are added. Growing moves none of them.
class DatNodes
{
public:
    std::int32_t Count() const { return m_count; }

    const DatNode &operator[](std::int32_t index) const
    {
        return m_chunks[std::size_t(index) / ChunkSize][std::size_t(index) % ChunkSize];
    }
    DatNode &operator[](std::int32_t index) { return const_cast<DatNode &>(std::as_const(*this)[index]); }

    DatNode &Append()
    {
        if (std::size_t(m_count) % ChunkSize == 0)
            m_chunks.emplace_back().reserve(ChunkSize);
        ++m_count;
        return m_chunks.back().emplace_back();
    }

private:
    static constexpr std::size_t ChunkSize = 1024;

    std::vector<std::vector<DatNode>> m_chunks;
    std::int32_t m_count = 0;
};

// The memory that the items and the plain form of a document may take, in bytes, whose file has so many. The
// most regular table that was tried takes 62 times its file; what is made to fill the memory shrinks to
// nearly nothing.
constexpr std::int64_t DatMemoryFor(std::int64_t fileSize)
{
    return std::max<std::int64_t>(128 << 20, 128 * fileSize);
}

class DatTree
{
public:
    // No valid document.
    DatTree() = default;

    // `bytes` are the plain form, which the texts of `items` lie in.
    DatTree(ByteArray bytes, DatNodes items, bool isZL);

    bool IsZL = false; // it is, or is to be, stored compressed

    // 0 when there is no valid document. Item 0 is the root block; every other one follows its parent.
    std::int32_t Count() const { return m_items.Count(); }
    const DatNode &Item(std::int32_t index) const { return m_items[index]; }

    QString Name(std::int32_t index) const { return TextAt(m_items[index].Name); }
    QString Value(std::int32_t index) const;

    // The names from the root down, parted by "\"; the root's is empty.
    QString FullPath(std::int32_t index) const;

    // The children of a block, in the file's order.
    std::vector<std::int32_t> Children(std::int32_t index) const;

    // Gives a value another text. Units of zero, which would end it in the file, are left out.
    void SetValue(std::int32_t index, QString text);

    // What was read, and the values that have changed since, by their items.
    ByteView Bytes() const { return m_bytes; }
    const std::map<std::int32_t, QString> &Changes() const { return m_changes; }

private:
    QString TextAt(const DatText &text) const;

    ByteArray m_bytes;
    DatNodes m_items;
    std::map<std::int32_t, QString> m_changes;
};

} // namespace wb
