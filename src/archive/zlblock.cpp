#include "archive/zlblock.h"

#include "common/bytes.h"
#include "gfx/graphicslibrary.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <numeric>

namespace wb
{

namespace
{

constexpr std::int32_t TagSize = 4;
constexpr std::int32_t LengthSize = 4;
constexpr std::int32_t SlotSize = LengthSize + ZlHeaderSize + ZlChunkSize + ZlChunkSize / 100 + 12;

// No packer makes a chunk's block so long; a longer one is damaged.
constexpr std::int64_t LongestBlock = 16 * ZlChunkSize;

// deflate's longest match takes two bits (RFC 1951): no stream gives more bytes than these times its own.
constexpr std::int64_t MaxExpansion = 1032;

// The chunk stream of so many bytes is not longer, unless another packer made it of what does not shrink.
std::int64_t StreamBound(std::int64_t unpackedLength)
{
    return unpackedLength + (unpackedLength / ZlChunkSize + 1) * (SlotSize - ZlChunkSize);
}

// zlib's classic bound of 1 % and 12 bytes, behind the header.
std::int32_t BlockCapacity(std::size_t length)
{
    const double exact = double(length) * 0.01 + double(length) + 20.0;
    return static_cast<std::int32_t>(std::nearbyint(exact));
}

std::int64_t MostBytesOf(std::int64_t blockLength)
{
    return std::max<std::int64_t>(blockLength - ZlHeaderSize, 0) * MaxExpansion;
}

std::int32_t RecordLengthAt(const InputFile &archive, std::int64_t position)
{
    std::array<std::uint8_t, LengthSize> bytes = {};
    return archive.ReadAt(position, bytes) == bytes.size() ? GetLong(bytes, 0) : 0;
}

// How many of `wanted` bytes the records from `position` on can give at most.
std::int64_t ReachOf(const InputFile &archive, std::int64_t position, std::int64_t wanted)
{
    std::int64_t reach = 0;
    while (reach < wanted) {
        const std::int32_t length = RecordLengthAt(archive, position);
        const std::int64_t there = std::min<std::int64_t>(length, archive.Size() - position - LengthSize);
        if (MostBytesOf(there) <= 0)
            break;
        reach += std::min<std::int64_t>(ZlChunkSize, MostBytesOf(there));
        position += LengthSize + std::int64_t(length);
    }
    return std::min(reach, wanted);
}

// Reads an archive forward through a window, so that small records cost no read each.
class RecordReader
{
public:
    // `expected`: the stream is not likely to be longer.
    RecordReader(const InputFile &archive, std::int64_t position, std::int64_t expected)
        : m_archive(archive), m_position(position), m_left(expected)
    {
    }

    // The next record's block, as much of it as there is.
    ByteView Next()
    {
        const ByteView lengthBytes = Take(LengthSize);
        const std::int64_t length = lengthBytes.size() < LengthSize ? 0 : GetLong(lengthBytes, 0);
        return Take(std::clamp<std::int64_t>(length, 0, LongestBlock));
    }

private:
    // Up to `count` bytes from the position on, which moves behind them.
    ByteView Take(std::int64_t count)
    {
        if (count > m_windowStart + std::int64_t(m_window.size()) - m_position)
            Fill(count);
        const std::int64_t inside = m_position - m_windowStart;
        const std::int64_t given = std::min(count, std::int64_t(m_window.size()) - inside);
        m_position += given;
        return ByteView(m_window).subspan(std::size_t(inside), std::size_t(given));
    }

    void Fill(std::int64_t count)
    {
        constexpr std::int64_t windowSize = 256 * 1024;
        const std::int64_t there = std::max<std::int64_t>(m_archive.Size() - m_position, 0);
        m_window.resize(std::size_t(std::min(there, std::max(count, std::min(windowSize, m_left)))));
        m_windowStart = m_position;
        m_window.resize(m_archive.ReadAt(m_position, m_window));
        m_left = std::max<std::int64_t>(m_left - std::int64_t(m_window.size()), 0);
    }

    const InputFile &m_archive;
    std::int64_t m_position;
    std::int64_t m_left;
    std::int64_t m_windowStart = 0;
    ByteArray m_window;
};

} // namespace

bool ZlBlockUnpack(ByteArray &destination, ByteView source, std::int32_t sourceLength, std::int32_t position)
{
    destination.clear();
    ByteReader reader(source);
    reader.Seek(position);
    reader.Take(TagSize);
    const std::int32_t unpackedLength = reader.Long();
    if (reader.Failed() || unpackedLength <= 0)
        return unpackedLength == 0 && !reader.Failed();
    const std::int64_t there = std::int64_t(source.size()) - position;
    const auto length =
        static_cast<std::int32_t>(sourceLength < 0 ? there : std::min<std::int64_t>(sourceLength, there));
    const auto capacity =
        static_cast<std::int32_t>(std::min<std::int64_t>(unpackedLength, MostBytesOf(length)));
    destination.resize(std::size_t(capacity));
    const std::int32_t produced =
        Graphics().VTGF_ZLib_UnCompress(destination.data(), &capacity, source.data() + position, &length);
    if (produced > 0)
        std::fill(destination.begin() + produced, destination.end(), std::uint8_t(0));
    return produced == unpackedLength;
}

void ZlBlockPack(ByteArray &destination, ByteView source)
{
    const auto length = static_cast<std::int32_t>(source.size());
    const std::int32_t capacity = BlockCapacity(source.size());
    destination.resize(std::size_t(capacity));
    const std::int32_t streamLength =
        Graphics().VTGF_ZLib_Compress(destination.data(), &capacity, source.data(), &length);
    destination.resize(streamLength > 0 ? std::size_t(streamLength + ZlHeaderSize) : 0);
}

ZlChunkPacker::ZlChunkPacker(ByteView source, std::size_t lead)
    : m_source(source), m_lead(lead), m_lengths((source.size() + ZlChunkSize - 1) / ZlChunkSize)
{
    m_room.resize(lead + m_lengths.size() * SlotSize);
}

void ZlChunkPacker::PackChunk(int chunk)
{
    const std::size_t start = std::size_t(chunk) * ZlChunkSize;
    const ByteView part =
        m_source.subspan(start, std::min<std::size_t>(ZlChunkSize, m_source.size() - start));
    const auto length = static_cast<std::int32_t>(part.size());
    std::uint8_t *slot = m_room.data() + m_lead + std::size_t(chunk) * SlotSize;
    const std::int32_t streamLength = Graphics().VTGF_ZLib_Compress2(slot + LengthSize, part.data(), &length);
    m_lengths[std::size_t(chunk)] = streamLength > 0 ? ZlHeaderSize + streamLength : 0;
}

std::int64_t ZlChunkPacker::StreamLength() const
{
    if (std::ranges::find(m_lengths, 0) != m_lengths.end())
        return 0;
    return std::accumulate(m_lengths.begin(), m_lengths.end(), std::int64_t(m_lengths.size()) * LengthSize);
}

ByteArray ZlChunkPacker::TakeStream()
{
    std::size_t end = m_lead;
    for (std::size_t chunk = 0; chunk < m_lengths.size(); ++chunk) {
        const std::uint8_t *block = m_room.data() + m_lead + chunk * SlotSize + LengthSize;
        PutLong(m_room, std::int32_t(end), m_lengths[chunk]);
        end += LengthSize;
        std::memmove(m_room.data() + end, block, std::size_t(m_lengths[chunk]));
        end += std::size_t(m_lengths[chunk]);
    }
    m_room.resize(end);
    return std::move(m_room);
}

std::int32_t ZlChunkStreamPack(ByteArray &destination, ByteView source)
{
    ZlChunkPacker packer(source);
    for (int chunk = 0; chunk < packer.ChunkCount(); ++chunk)
        packer.PackChunk(chunk);
    destination = packer.TakeStream();
    return std::int32_t(destination.size());
}

bool ZlChunkStreamUnpack(const InputFile &archive, ByteArray &destination, std::int32_t dataOffset,
                         std::int32_t unpackedLength)
{
    const std::int64_t start = std::int64_t(dataOffset) + LengthSize;
    destination.clear();
    if (dataOffset < 0 || unpackedLength <= 0)
        return unpackedLength == 0;
    // One chunk's bytes are not worth asking for.
    const std::int64_t size = unpackedLength <= ZlChunkSize ? std::int64_t(unpackedLength)
                                                            : ReachOf(archive, start, unpackedLength);
    destination.resize(std::size_t(size));

    RecordReader records(archive, start, StreamBound(unpackedLength));
    std::int64_t written = 0;
    bool isWhole = true;
    while (written < size && isWhole) {
        const ByteView block = records.Next();
        const auto length = static_cast<std::int32_t>(block.size());
        const auto room = static_cast<std::int32_t>(std::min<std::int64_t>(ZlChunkSize, size - written));
        const std::int32_t produced =
            Graphics().VTGF_ZLib_UnCompress2(destination.data() + written, &room, block.data(), &length);
        isWhole = produced > 0;
        // A damaged chunk has filled its room with what it gave, and zeroes.
        written += isWhole ? produced : room;
    }
    std::fill(destination.begin() + written, destination.end(), std::uint8_t(0));
    return isWhole && written == unpackedLength;
}

} // namespace wb
