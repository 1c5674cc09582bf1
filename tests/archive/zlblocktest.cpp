#include "archive/zlblock.h"

#include "common/bytes.h"
#include "support/table.h"
#include "support/tempfolder.h"

#include <random>
#include <zlib.h>

using namespace wb;

namespace
{

// So many bytes: a text of few letters that shrinks, or noise that does not.
ByteArray MakeBytes(std::size_t size, bool isNoise = false)
{
    std::minstd_rand random(unsigned(size) + 1);
    ByteArray bytes(size);
    for (std::uint8_t &byte : bytes)
        byte = static_cast<std::uint8_t>(isNoise ? random() >> 8 : 'a' + random() % 3);
    return bytes;
}

// A chunk stream as zlib itself makes it.
ByteArray MakeStream(ByteView source)
{
    ByteArray stream;
    std::int32_t end = 0;
    while (!source.empty()) {
        const ByteView chunk = source.first(std::min<std::size_t>(65536, source.size()));
        ByteArray room(::compressBound(chunk.size()));
        uLongf length = room.size();
        EXPECT_EQ(Z_OK, ::compress2(room.data(), &length, chunk.data(), chunk.size(), Z_DEFAULT_COMPRESSION));
        for (const std::int32_t value : {std::int32_t(length) + 8, 0x32304C5A, ByteCount(chunk)})
            AppendLong(stream, end, value);
        stream.insert(stream.end(), room.begin(), room.begin() + std::ptrdiff_t(length));
        end = ByteCount(stream);
        source = source.subspan(chunk.size());
    }
    return stream;
}

// What zlib gives of one; the rest of `target` stays as it was. False when it isn't whole.
bool ZlibExpand(std::span<std::uint8_t> target, ByteView stream)
{
    uLongf produced = 1;
    for (ByteReader reader(stream); !target.empty() && produced > 0; target = target.subspan(produced)) {
        const std::int64_t length = reader.Long();
        const ByteView block = reader.Take(std::clamp<std::int64_t>(length, 0, reader.Remaining()));
        produced = std::min<std::size_t>(65536, target.size());
        if (block.size() <= 8 || ::uncompress(target.data(), &produced, &block[8], block.size() - 8) != Z_OK)
            return false;
    }
    return produced > 0;
}

// Unpacks the stream from a file, or its first record, which is a block behind 4 bytes.
bool Unpack(bool isStream, ByteArray &got, const ByteArray &stream, std::int32_t size)
{
    if (!isStream)
        return ZlBlockUnpack(got, stream, -1, 4);
    static const TempFolder folder;
    std::filesystem::remove(folder.Native("made")); // rewriting it is slower
    folder.Put("made", "size" + TextOf(stream));
    InputFile made;
    made.Open(folder.Native("made"));
    return ZlChunkStreamUnpack(made, got, 0, size);
}

// Of bytes that nothing of this packed size can reach, fewer may come.
void ExpectAsZlib(bool isStream, const ByteArray &packed, std::size_t size)
{
    ByteArray got(size, 0xEE), expected(size, 0);
    ASSERT_EQ(ZlibExpand(expected, packed), Unpack(isStream, got, packed, std::int32_t(size)));
    ASSERT_LE(got.size(), std::min(size, packed.size() * 1032));
    got.resize(size, 0);
    ASSERT_EQ(expected, got);
}

TEST(Zl, PacksWhatZlibGivesAndGetsItBack)
{
    for (const bool isNoise : {false, true})
        for (const std::size_t size : {1, 65535, 65536, 65537, 131072, 200'000}) {
            const ByteArray source = MakeBytes(size, isNoise);
            ByteArray expected = MakeStream(source), packed(300'000, 0xEE), unpacked = packed;
            EXPECT_EQ(ByteCount(expected), ZlChunkStreamPack(packed, source));
            EXPECT_EQ(expected, packed) << size;
            packed.insert(packed.end(), 100, 0xFF); // which is no record
            EXPECT_TRUE(Unpack(true, unpacked, packed, ByteCount(source)));
            EXPECT_EQ(source, unpacked) << size;

            ZlBlockPack(packed, source);
            expected[7] = '1';
            EXPECT_TRUE(size > 65536 || std::equal(packed.begin(), packed.end(), &expected[4])) << size;
            EXPECT_TRUE(ZlBlockUnpack(unpacked, packed, -1, 0));
            EXPECT_EQ(source, unpacked) << size;
        }
}

TEST(Zl, SizesWhatItUnpacks)
{
    for (const TableRow &row : ReadTable("archive/zllengths.txt", 6)) {
        ByteArray file(96, 1), stream = MakeStream(MakeBytes(1000)), expected(std::size_t(row.Int(4)), 0);
        const std::int32_t length = row.Int(2) == 0 ? GetLong(stream, 0) : row.Int(2);
        PutLong(stream, 8, row.Int(3));
        file.insert(file.end(), stream.begin(), stream.end());
        file.insert(file.end(), 100, 1);
        PutLong(stream, 0, length & 0x7FFFFFFF);
        ZlibExpand(expected, stream);
        ByteArray got(500, 0xEE);
        EXPECT_EQ(row.Int(5) != 0, ZlBlockUnpack(got, file, length, row.Int(1))) << row.line;
        EXPECT_EQ(expected, got) << row.line;
        EXPECT_LE(got.capacity(), std::max<std::size_t>(expected.size(), 1000)) << row.line;
    }
}

TEST(Zl, GivesOfDamagedBytesWhatZlibGives)
{
    ByteArray chunks(131'073, 7);
    std::ranges::copy(MakeBytes(300), chunks.begin() + 65'400); // the end of a chunk, the start of the next
    for (const std::size_t size : {1, 100, 65535})
        ExpectAsZlib(true, MakeStream(chunks), size);
    ByteArray promising = MakeStream(MakeBytes(70'000));
    PutLong(promising, 8, 0x7FFFFFFF);
    const ByteArray empty = {16, 0, 0, 0, 'Z', 'L', '0', '2', 100, 0, 0, 0, 0x78, 0x9C, 3, 0, 0, 0, 0, 1};
    for (const bool isStream : {false, true}) {
        ByteArray got;
        ExpectAsZlib(isStream, empty, 100);
        EXPECT_FALSE(Unpack(isStream, got, promising, 0x7FFFFFFF));
        EXPECT_LE(got.capacity(), isStream ? 131'072 : promising.size() * 1032) << "no memory on a promise";
        const ByteArray source = isStream ? chunks : MakeBytes(1000), packed = MakeStream(source);
        for (auto end = packed.begin() + (isStream ? 0 : 12); end != packed.end(); ++end)
            ExpectAsZlib(isStream, {packed.begin(), end}, source.size());
        std::minstd_rand random(1);
        for (int run = 0; run < 2000; ++run) {
            ByteArray damaged = packed;
            for (int count = run % 4; count >= 0; --count)
                damaged[random() % damaged.size()] = static_cast<std::uint8_t>(random() >> 8);
            if (!isStream)
                std::ranges::copy_n(packed.begin(), 12, damaged.begin());
            SCOPED_TRACE(run);
            ExpectAsZlib(isStream, damaged, source.size());
        }
    }
}

} // namespace
