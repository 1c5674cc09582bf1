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

// What zlib gives for a block, and zeroes behind. The number of bytes; 0 for a damaged one.
std::size_t ZlibExpand(std::span<std::uint8_t> target, ByteView block)
{
    uLongf produced = block.size() > ZlHeaderSize ? target.size() : 0;
    const int result = produced == 0 ? Z_DATA_ERROR
                                     : ::uncompress(target.data(), &produced, block.data() + ZlHeaderSize,
                                                    block.size() - ZlHeaderSize);
    std::ranges::fill(target.subspan(produced), std::uint8_t(0));
    return result == Z_OK ? produced : 0;
}

bool ZlibExpandStream(std::span<std::uint8_t> target, ByteView stream)
{
    ByteReader reader(stream);
    std::size_t produced = 1;
    for (; !target.empty() && produced > 0; target = target.subspan(produced)) {
        const std::int64_t length = reader.Long();
        const ByteView block = reader.Take(std::clamp<std::int64_t>(length, 0, reader.Remaining()));
        produced = ZlibExpand(target.first(std::min<std::size_t>(65536, target.size())), block);
    }
    return produced > 0;
}

// Of bytes that no stream of this size can reach, fewer may come.
void ExpectAsZlib(const ByteArray &expected, bool isExpectedWhole, ByteArray got, bool isWhole,
                  std::size_t packedSize, const std::string &what)
{
    ASSERT_EQ(isExpectedWhole, isWhole) << what;
    ASSERT_LE(got.size(), std::min(expected.size(), packedSize * 1032)) << what;
    got.resize(expected.size(), 0);
    ASSERT_EQ(expected, got) << what;
}

class Zl : public testing::Test
{
protected:
    // The stream lies in a file behind 3 bytes and its length.
    bool UnpackStream(ByteArray &got, ByteView stream, std::size_t size) const
    {
        ByteArray file(7, 0x55);
        Append(file, stream);
        std::filesystem::remove(folder.Native("made")); // rewriting it is slower
        folder.Put("made", TextOf(file));
        InputFile made;
        made.Open(folder.Native("made"));
        return ZlChunkStreamUnpack(made, got, 3, std::int32_t(size));
    }

    void ExpectStreamAsZlib(const ByteArray &stream, std::size_t size, const std::string &what) const
    {
        ByteArray got = UsedBytes(), expected(size, 0);
        const bool isWhole = UnpackStream(got, stream, size);
        const bool isExpectedWhole = ZlibExpandStream(expected, stream);
        ExpectAsZlib(expected, isExpectedWhole, got, isWhole, stream.size(), what);
    }

    static void ExpectBlockAsZlib(const ByteArray &block, std::size_t size, const std::string &what)
    {
        ByteArray got = UsedBytes(), expected(size, 0);
        const bool isWhole = ZlBlockUnpack(got, block, -1, 0);
        const bool isExpectedWhole = ZlibExpand(expected, block) == size;
        ExpectAsZlib(expected, isExpectedWhole, got, isWhole, block.size(), what);
    }

    TempFolder folder;
};

TEST_F(Zl, PacksWhatZlibGivesAndGetsItBack)
{
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
            EXPECT_TRUE(UnpackStream(unpacked = UsedBytes(), packed, size)) << size;
            EXPECT_EQ(source, unpacked) << size;
        }
}

TEST_F(Zl, PacksChunksInAnyOrderBehindALead)
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

TEST_F(Zl, SizesWhatItUnpacks)
{
    for (const TableRow &row : ReadTable("archive/zllengths.txt", 6)) {
        ByteArray file(100, 1), block = MakeBlock("any ", MakeBytes(1000)), got = UsedBytes();
        PutLong(block, 4, row.Int(3));
        Append(file, block);
        file.insert(file.end(), 100, 1);
        const std::int32_t length = row.Int(2) == 0 ? ByteCount(block) : row.Int(2);
        EXPECT_EQ(row.Int(5) != 0, ZlBlockUnpack(got, file, length, row.Int(1))) << row.line;
        ByteArray expected(std::size_t(row.Int(4)));
        block.resize(std::min(block.size(), std::size_t(length)));
        ZlibExpand(expected, block);
        EXPECT_EQ(expected, got) << row.line;
    }
}

// Lengths that promise two gigabytes cost what the records can give.
TEST_F(Zl, TakesNoMemoryOnAPromise)
{
    const ByteArray source = MakeBytes(70'000);
    ByteArray block = MakeBlock("ZL01", source), stream = MakeStream(source), got, more;
    PutLong(block, 4, 0x7FFFFFFF);
    EXPECT_FALSE(ZlBlockUnpack(got, block, -1, 0));
    EXPECT_LE(got.capacity(), block.size() * 1032);
    for (const std::int32_t length : {GetLong(stream, 0), 0, 8, -1, 0x7FFFFFFF}) {
        PutLong(stream, 0, length);
        EXPECT_FALSE(UnpackStream(more, stream, 0x7FFFFFFF));
        EXPECT_LE(more.capacity(), 2 * 65536U) << length;
    }
}

TEST_F(Zl, WritesNothingBehindItsRoom)
{
    const ByteArray source = MakeBytes(65536), block = MakeBlock("ZL02", source);
    const std::int32_t length = ByteCount(block);
    for (const std::int32_t room : {1, 100, 65535}) {
        ByteArray target(66'000, 0xEE), expected = source;
        Graphics().VTGF_ZLib_UnCompress2(target.data(), &room, block.data(), &length);
        expected.resize(std::size_t(room));
        expected.resize(target.size(), 0xEE);
        EXPECT_EQ(expected, target) << room;
        ExpectStreamAsZlib(MakeStream(source), std::size_t(room), "a chunk beyond the size");
    }
}

TEST_F(Zl, GivesOfDamagedBytesWhatZlibGives)
{
    ByteArray source(131'073, 7);
    std::ranges::copy(MakeBytes(300), source.begin() + 65'400); // the end of a chunk, the start of the next
    const ByteArray block = MakeBlock("ZL01", MakeBytes(1000)), stream = MakeStream(source);
    const auto part = [](const ByteArray &whole, std::size_t length) {
        return ByteArray(whole.begin(), whole.begin() + std::ptrdiff_t(length));
    };
    for (std::size_t length = ZlHeaderSize; length < block.size(); ++length)
        ExpectBlockAsZlib(part(block, length), 1000, "cut at " + std::to_string(length));
    for (std::size_t length = 0; length < stream.size(); ++length)
        ExpectStreamAsZlib(part(stream, length), source.size(), "cut at " + std::to_string(length));
    std::minstd_rand random(1);
    for (int run = 0; run < 2000; ++run) {
        ByteArray damagedBlock = block, damagedStream = stream;
        Damage(damagedBlock, random);
        std::ranges::copy_n(block.begin(), ZlHeaderSize, damagedBlock.begin());
        ExpectBlockAsZlib(damagedBlock, 1000, "block " + std::to_string(run));
        Damage(damagedStream, random);
        ExpectStreamAsZlib(damagedStream, source.size(), "stream " + std::to_string(run));
    }
}

} // namespace
