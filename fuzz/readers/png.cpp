// PNG files (ISO/IEC 15948): a signature, then chunks of a length, a name, data and a CRC of the latter two.
#include "fuzz/support/inner.h"
#include "fuzz/support/picturereader.h"

#include "common/bytes.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <zlib.h>

namespace wb
{

namespace
{

constexpr std::string_view Signature = "\x89PNG\r\n\x1A\n";
constexpr std::string_view RowsName = "IDAT";
constexpr std::size_t NumberSize = 4; // big-endian

// The fuzzer follows its own code and not libpng's: it is told which kinds of picture that has read.
[[gnu::section("__libfuzzer_extra_counters")]] std::array<std::uint8_t, 17 * 16> kindsSeen;

void AppendNumber(ByteArray &bytes, std::uint32_t number)
{
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes.push_back(std::uint8_t(number >> shift));
}

std::size_t NumberAt(ByteView bytes, std::size_t place)
{
    std::size_t number = 0;
    for (const std::uint8_t byte : bytes.subspan(place, NumberSize))
        number = number << 8 | byte;
    return number;
}

// The data of the header chunk, which other chunks may precede; empty without a whole one.
ByteView HeaderOf(ByteView file)
{
    constexpr std::string_view Name = "IHDR";
    constexpr std::size_t Size = 13;
    const auto place =
        std::size_t(std::search(file.begin(), file.end(), Name.begin(), Name.end()) - file.begin()) +
        Name.size();
    return place + Size <= file.size() ? file.subspan(place, Size) : ByteView();
}

// Between sizes that are quick to fill and those that are refused lie some that take the time of a thousand
// files.
bool IsSlow(ByteView header)
{
    constexpr std::uint64_t Quick = 1 << 12;
    constexpr std::uint64_t Refused = 1 << 26;
    const std::uint64_t pixels = std::uint64_t(NumberAt(header, 0)) * NumberAt(header, NumberSize);
    return pixels > Quick && pixels < Refused;
}

bool IsRows(ByteView nameAndData)
{
    return nameAndData.size() >= RowsName.size() &&
           std::ranges::equal(nameAndData.first(RowsName.size()), RowsName);
}

// The rows of all chunks behind their filter bytes, in the place of the first of them.
void ExpandRows(std::vector<FilePart> &parts)
{
    const auto isRows = [](const FilePart &part) { return IsRows(part.bytes); };
    const auto first = std::ranges::find_if(parts, isRows);
    if (first == parts.end())
        return;
    ByteArray stream;
    for (const FilePart &part : parts)
        if (isRows(part))
            AppendBytes(stream, ByteView(part.bytes).subspan(RowsName.size()));
    static std::array<std::uint8_t, 1 << 16> rows;
    uLongf length = rows.size();
    ::uncompress(rows.data(), &length, stream.data(), stream.size());
    *first = {ByteArray(rows.begin(), rows.begin() + length), true};
    parts.erase(std::remove_if(first + 1, parts.end(), isRows), parts.end());
}

ByteArray CompressedRows(ByteView rows)
{
    ByteArray chunk(RowsName.begin(), RowsName.end());
    uLongf length = ::compressBound(rows.size());
    chunk.resize(RowsName.size() + length);
    ::compress(chunk.data() + RowsName.size(), &length, rows.data(), rows.size());
    chunk.resize(RowsName.size() + length);
    return chunk;
}

} // namespace

// One part a chunk: its name and data.
std::vector<FilePart> TakeApart(ByteView file, bool expands)
{
    std::vector<FilePart> parts;
    std::size_t place = Signature.size();
    while (place + 2 * NumberSize <= file.size()) {
        const std::size_t length = NumberAt(file, place) + RowsName.size();
        place += NumberSize;
        const ByteView chunk = file.subspan(place, std::min(length, file.size() - place));
        parts.push_back({ByteArray(chunk.begin(), chunk.end())});
        place += chunk.size() + std::min(NumberSize, file.size() - place - chunk.size());
    }
    if (expands)
        ExpandRows(parts);
    return parts;
}

ByteArray PutTogether(const std::vector<FilePart> &parts)
{
    ByteArray file(Signature.begin(), Signature.end());
    for (const FilePart &part : parts) {
        const ByteArray chunk = part.isPacked ? CompressedRows(part.bytes) : part.bytes;
        const std::size_t dataSize = std::max(chunk.size(), RowsName.size()) - RowsName.size();
        AppendNumber(file, std::uint32_t(dataSize));
        AppendBytes(file, chunk);
        AppendNumber(file, std::uint32_t(::crc32(0, chunk.data(), uInt(chunk.size()))));
    }
    return file;
}

void FuzzOne(ByteView bytes)
{
    const ByteView header = HeaderOf(bytes);
    if (!header.empty() && IsSlow(header))
        return;
    if (!FuzzPicture(bytes, &GraphicsLibrary::VTGF_Read_PNG) || header.empty())
        return;
    // Bits a sample, colour type, interlacing.
    const std::size_t kind = header[8] * 16U + header[9] * 2U + header[12];
    if (kind < kindsSeen.size())
        ++kindsSeen[kind];
}

} // namespace wb
