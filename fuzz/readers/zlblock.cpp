// A block gives what zlib gives for its stream, whichever library expands it.
#include "fuzz/support/inner.h"
#include "fuzz/support/target.h"

#include "archive/zlblock.h"
#include "common/bytes.h"

#include <algorithm>
#include <array>
#include <zlib.h>

namespace wb
{

namespace
{

// Around the deflated bytes of a zlib stream (RFC 1950).
constexpr std::array<std::uint8_t, 2> StreamHead = {0x78, 0x9C};
constexpr std::size_t ChecksumSize = 4; // big-endian

// A block of the deflated bytes, with the length and the checksum of what they give.
ByteArray BlockOf(ByteView deflated)
{
    constexpr int WithoutHead = -15;
    static std::array<std::uint8_t, 1 << 16> plain;

    z_stream stream = {};
    stream.next_in = const_cast<Bytef *>(deflated.data());
    stream.avail_in = uInt(deflated.size());
    stream.next_out = plain.data();
    stream.avail_out = plain.size();
    if (::inflateInit2(&stream, WithoutHead) == Z_OK) {
        ::inflate(&stream, Z_FINISH);
        ::inflateEnd(&stream);
    }
    ByteArray block(ZlHeaderSize);
    PutLong(block, 0, ZlTag01);
    PutLong(block, 4, std::int32_t(stream.total_out));
    AppendBytes(block, StreamHead);
    AppendBytes(block, deflated.first(stream.total_in));
    const uLong checksum = ::adler32(1, plain.data(), uInt(stream.total_out));
    for (int shift = 24; shift >= 0; shift -= 8)
        block.push_back(std::uint8_t(checksum >> shift));
    return block;
}

} // namespace

std::vector<FilePart> TakeApart(ByteView file, bool expands)
{
    constexpr std::size_t Start = ZlHeaderSize + StreamHead.size();

    if (file.size() < Start + ChecksumSize)
        return {};
    ByteArray plain;
    if (expands && ZlBlockUnpack(plain, file, -1, 0))
        return {{std::move(plain), true}};
    return {{ByteArray(file.begin() + Start, file.end() - ChecksumSize)}};
}

ByteArray PutTogether(const std::vector<FilePart> &parts)
{
    ByteArray file;
    if (!parts.empty() && parts.front().isPacked)
        ZlBlockPack(file, parts.front().bytes);
    else if (!parts.empty())
        file = BlockOf(parts.front().bytes);
    return file;
}

void FuzzOne(ByteView bytes)
{
    constexpr std::int64_t MostExpansion = 1032; // of deflate

    ByteArray plain;
    const bool isWhole = ZlBlockUnpack(plain, bytes, -1, 0);
    if (bytes.size() < std::size_t(ZlHeaderSize))
        return;
    const std::int64_t stated = GetLong(bytes, 4);
    const ByteView stream = bytes.subspan(ZlHeaderSize);
    ByteArray expected;
    expected.assign(
        std::size_t(std::clamp<std::int64_t>(stated, 0, std::int64_t(stream.size()) * MostExpansion)), 0);
    uLongf produced = expected.size();
    const int result = ::uncompress(expected.data(), &produced, stream.data(), stream.size());
    const bool isWholeForZlib = stated == 0 || (result == Z_OK && std::int64_t(produced) == stated);
    // libdeflate takes two codes of no meaning (RFC 1951, 3.2.6), which end the stream for zlib.
    const bool goesOn =
        result == Z_DATA_ERROR && plain.size() == expected.size() &&
        std::equal(expected.begin(), expected.begin() + std::ptrdiff_t(produced), plain.begin());
    Require(goesOn || (plain == expected && isWhole == isWholeForZlib), "the bytes are zlib's");
}

} // namespace wb
