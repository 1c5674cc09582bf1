// ZL blocks, the game's unit of compression, and the chunk streams that archives are made of.
//
// A block is a tag of four bytes ("ZL01" alone, "ZL02" for a chunk of a stream), the number of bytes it
// expands to (signed 32-bit, little-endian) and a zlib stream (RFC 1950). A chunk stream is the data cut into
// chunks of 65,536 bytes, the last one shorter, each as a record: the length of the block that follows
// (signed 32-bit), then the block.
#pragma once

#include "common/bytearray.h"
#include "platform/fileio.h"

#include <cstdint>
#include <vector>

namespace wb
{

inline constexpr std::int32_t ZlHeaderSize = 8;
inline constexpr std::int32_t ZlChunkSize = 65536;
inline constexpr std::int32_t ZlTag01 = 0x31304C5A; // "ZL01"

// Expands the block at `position` of `source`; `sourceLength` -1 means all of `source`. `destination` gets
// the stated number of bytes: what a damaged stream lacks is zero. A length that the stream cannot reach
// (zlib expands at most 1,032 times) gives no more than it can, one that is zero or negative and a header
// outside `source` give no bytes. The tag is not looked at. True when the stream was whole and gave exactly
// the stated number of bytes.
bool ZlBlockUnpack(ByteArray &destination, ByteView source, std::int32_t sourceLength, std::int32_t position);

// Makes `destination` one block with the tag "ZL01"; empty when memory does not suffice.
void ZlBlockPack(ByteArray &destination, ByteView source);

// A chunk stream in the making. The chunks may be packed in any order and by several threads at once.
class ZlChunkPacker
{
public:
    // Keeps the view of `source`, at least 1 byte; takes the room for all chunks, and `lead` bytes in front
    // of them.
    explicit ZlChunkPacker(ByteView source, std::size_t lead = 0);

    int ChunkCount() const { return int(m_lengths.size()); }
    void PackChunk(int chunk);

    // Once every chunk is packed: the chunk stream's length, 0 when memory did not suffice for packing one of
    // them.
    std::int64_t StreamLength() const;

    // The lead, whose bytes are undefined, and the chunk stream; 2,147,483,647 bytes at most in all.
    ByteArray TakeStream();

private:
    ByteView m_source;
    std::size_t m_lead;
    ByteArray m_room; // the lead, then one slot a chunk
    std::vector<std::int32_t> m_lengths;
};

// Makes `destination` the chunk stream of `source` (at least 1 byte) and gives its length.
std::int32_t ZlChunkStreamPack(ByteArray &destination, ByteView source);

// Expands the chunk stream of an archive's entry, whose own length field of four bytes lies at `dataOffset`
// (0-based) of `archive`. `destination` gets `unpackedLength` bytes, or fewer where the records cannot reach
// so far; expanding stops at the first record that is damaged or cut off, and what is missing is zero.
// Nothing is read behind the last record that is needed. True when exactly `unpackedLength` bytes came out of
// whole records.
bool ZlChunkStreamUnpack(const InputFile &archive, ByteArray &destination, std::int32_t dataOffset,
                         std::int32_t unpackedLength);

} // namespace wb
