#include "archive/zlblock.h"

#include "gfx/graphicslibrary.h"
#include "madebytes.h"
#include "support/table.h"

#include <zlib.h>

using namespace wb;
using namespace wb::test;

namespace
{

void Append(ByteArray &bytes, ByteView more)
{
    bytes.insert(bytes.end(), more.begin(), more.end());
}

// A block as zlib itself makes it.
ByteArray MakeBlock(std::string_view tag, ByteView source)
{
    ByteArray block(ZlHeaderSize + ::compressBound(source.size()));
    uLongf length = block.size() - ZlHeaderSize;
    EXPECT_EQ(Z_OK, ::compress2(block.data() + ZlHeaderSize, &length, source.data(), source.size(),
                                Z_DEFAULT_COMPRESSION));
    std::ranges::copy(tag, block.begin());
    PutLong(block, 4, ByteCount(source));
    block.resize(ZlHeaderSize + length);
    return block;
}

ByteArray MakeStream(ByteView source)
{
    ByteArray stream;
    for (std::size_t start = 0; start < source.size(); start += 65536) {
        const ByteView chunk = source.subspan(start, std::min<std::size_t>(65536, source.size() - start));
        std::int32_t end = ByteCount(stream);
        const ByteArray block = MakeBlock("ZL02", chunk);
        AppendLong(stream, end, ByteCount(block));
        Append(stream, block);
    }
    return stream;
}

// What zlib gives for a block, and the zeroes behind.
bool ZlibExpand(std::span<std::uint8_t> target, ByteView block, uLongf &produced)
{
    produced = target.size();
    const int result = block.size() <= ZlHeaderSize
                           ? Z_DATA_ERROR
                           : ::uncompress(target.data(), &produced, block.data() + ZlHeaderSize,
                                          block.size() - ZlHeaderSize);
    std::ranges::fill(target.subspan(block.size() <= ZlHeaderSize ? 0 : produced), std::uint8_t(0));
    return result == Z_OK && produced > 0;
}

// What zlib gives for a chunk stream, record by record.
bool ZlibExpandStream(ByteArray &target, ByteView stream)
{
    std::size_t written = 0;
    ByteReader reader(stream);
    while (written < target.size()) {
        const ByteView block = reader.Take(reader.Long());
        const std::size_t room = std::min<std::size_t>(65536, target.size() - written);
        uLongf produced = 0;
        if (!ZlibExpand(std::span(target).subspan(written, room), block, produced))
            return false;
        written += produced;
    }
    return true;
}

// Expands exactly as zlib does, but gives no more bytes than the blocks can reach.
void ExpectAsZlib(const ByteArray &got, bool isWhole, ByteArray expected, bool expectedWhole,
                  std::size_t packedSize, const std::string &what)
{
    ASSERT_LE(got.size(), expected.size()) << what;
    ASSERT_LE(got.size(), packedSize * 1032) << what;
    ASSERT_TRUE(std::all_of(expected.begin() + std::ptrdiff_t(got.size()), expected.end(),
                            [](std::uint8_t byte) { return byte == 0; }))
        << what;
    expected.resize(got.size());
    ASSERT_EQ(expected, got) << what;
    ASSERT_EQ(expectedWhole, isWhole) << what;
}

void ExpectBlockAsZlib(const ByteArray &block, std::size_t size, const std::string &what)
{
    ByteArray got = UsedBytes(), expected(size, 0);
    uLongf produced = 0;
    const bool isWhole = ZlBlockUnpack(got, block, -1, 0);
    const bool expectedWhole = ZlibExpand(expected, block, produced) && produced == size;
    ExpectAsZlib(got, isWhole, expected, expectedWhole, block.size(), what);
}

// The stream lies in a file behind 3 bytes and its length.
bool UnpackStream(const TempFolder &folder, ByteArray &got, ByteView stream, std::size_t size)
{
    ByteArray file(7, 0x55);
    Append(file, stream);
    return ZlChunkStreamUnpack(OpenMade(folder, file), got, 3, std::int32_t(size));
}

void ExpectStreamAsZlib(const TempFolder &folder, const ByteArray &stream, std::size_t size,
                        const std::string &what)
{
    ByteArray got = UsedBytes(), expected(size, 0);
    const bool isWhole = UnpackStream(folder, got, stream, size);
    const bool expectedWhole = ZlibExpandStream(expected, stream);
    ExpectAsZlib(got, isWhole, expected, expectedWhole, stream.size(), what);
}

TEST(Zl, PacksWhatZlibGivesAndGetsItBack)
{
    const TempFolder folder;
    for (const bool isNoise : {false, true})
        for (const std::size_t size : {0, 1, 65535, 65536, 65537, 131072, 200'000}) {
            const ByteArray source = MakeBytes(size, isNoise);
            ByteArray packed = UsedBytes(), unpacked = UsedBytes();
            ZlBlockPack(packed, source);
            EXPECT_EQ(MakeBlock("ZL01", source), packed) << size;
            EXPECT_TRUE(ZlBlockUnpack(unpacked, packed, -1, 0)) << size;
            EXPECT_EQ(source, unpacked) << size;
            if (size == 0)
                continue;
            EXPECT_EQ(ByteCount(MakeStream(source)), ZlChunkStreamPack(packed, source)) << size;
            EXPECT_EQ(MakeStream(source), packed) << size;
            packed.insert(packed.end(), 100, 0xFF); // which is no record
            EXPECT_TRUE(UnpackStream(folder, unpacked = UsedBytes(), packed, size)) << size;
            EXPECT_EQ(source, unpacked) << size;
        }
}

TEST(Zl, PacksChunksInAnyOrderBehindALead)
{
    const ByteArray source = MakeBytes(200'000);
    ZlChunkPacker packer(source, 5);
    ASSERT_EQ(4, packer.ChunkCount());
    for (const int chunk : {2, 3, 0, 1})
        packer.PackChunk(chunk);
    ByteArray stream = packer.TakeStream();
    stream.erase(stream.begin(), stream.begin() + 5);
    EXPECT_EQ(MakeStream(source), stream);
}

TEST(Zl, SizesWhatItUnpacks)
{
    for (const TableRow &row : ReadTable("archive/zllengths.txt", 6)) {
        ByteArray file(100, 1), block = MakeBlock("any ", MakeBytes(1000)), got = UsedBytes();
        PutLong(block, 4, row.Int(3));
        Append(file, block);
        file.insert(file.end(), 100, 1);
        const std::int32_t length = row.Int(2) == 0 ? ByteCount(block) : row.Int(2);
        EXPECT_EQ(row.Int(5) != 0, ZlBlockUnpack(got, file, length, row.Int(1))) << row.line;
        ByteArray expected(std::size_t(row.Int(4)));
        uLongf produced = 0;
        block.resize(std::min(block.size(), std::size_t(length)));
        ZlibExpand(expected, block, produced);
        EXPECT_EQ(expected, got) << row.line;
    }
}

// Lengths that promise two gigabytes cost what the records can give.
TEST(Zl, TakesNoMemoryOnAPromise)
{
    const TempFolder folder;
    ByteArray block = MakeBlock("ZL01", MakeBytes(1000)), stream = MakeStream(MakeBytes(70'000)), got;
    PutLong(block, 4, 0x7FFFFFFF);
    EXPECT_FALSE(ZlBlockUnpack(got, block, -1, 0));
    EXPECT_LE(got.capacity(), block.size() * 1032);
    ByteArray more;
    EXPECT_FALSE(UnpackStream(folder, more, stream, 0x7FFFFFFF));
    EXPECT_LE(more.capacity(), 2 * 65536U);
    more.resize(70'000);
    EXPECT_EQ(MakeBytes(70'000), more);
    for (const std::int32_t length : {0, 8, -1, 0x7FFFFFFF}) {
        PutLong(stream, 0, length);
        EXPECT_FALSE(UnpackStream(folder, more, stream, 0x7FFFFFFF));
        EXPECT_LE(more.size(), 65536U) << length;
        EXPECT_EQ(ByteArray(more.size(), 0), more) << length;
    }
}

TEST(Zl, WritesNothingBehindItsRoom)
{
    const TempFolder folder;
    const ByteArray source = MakeBytes(65536), block = MakeBlock("ZL02", source);
    const std::int32_t length = ByteCount(block);
    for (const std::int32_t room : {1, 100, 65535}) {
        ByteArray target(66'000, 0xEE), expected = source;
        Graphics().VTGF_ZLib_UnCompress2(target.data(), &room, block.data(), &length);
        expected.resize(std::size_t(room));
        expected.resize(target.size(), 0xEE);
        EXPECT_EQ(expected, target) << room;
        ExpectStreamAsZlib(folder, MakeStream(source), std::size_t(room), "a chunk beyond the size");
    }
}

TEST(Zl, GivesOfDamagedBytesWhatZlibGives)
{
    const TempFolder folder;
    const ByteArray block = MakeBlock("ZL01", MakeBytes(1000));
    ByteArray source(131'073, 7);
    std::ranges::copy(MakeBytes(300), source.begin() + 65'400); // the end of a chunk, the start of the next
    const ByteArray stream = MakeStream(source);
    for (std::size_t length = ZlHeaderSize; length < block.size(); ++length)
        ExpectBlockAsZlib({block.begin(), block.begin() + std::ptrdiff_t(length)}, 1000, "cut");
    for (std::size_t length = 0; length < stream.size(); ++length)
        ExpectStreamAsZlib(folder, {stream.begin(), stream.begin() + std::ptrdiff_t(length)}, source.size(),
                           "cut at " + std::to_string(length));
    std::minstd_rand random(1);
    for (int run = 0; run < 2000; ++run) {
        ByteArray damagedBlock = block, damagedStream = stream;
        Damage(damagedBlock, random);
        std::ranges::copy_n(block.begin(), ZlHeaderSize, damagedBlock.begin());
        ExpectBlockAsZlib(damagedBlock, 1000, "block " + std::to_string(run));
        Damage(damagedStream, random);
        ExpectStreamAsZlib(folder, damagedStream, source.size(), "stream " + std::to_string(run));
    }
}

} // namespace
