#include "common/bytes.h"

#include <cstring>
#include <limits>
#include <stdexcept>

namespace wb
{

namespace
{

// Least significant byte first.
std::uint32_t Compose(ByteView bytes)
{
    std::uint32_t value = 0;
    for (std::size_t i = bytes.size(); i > 0; i--)
        value = value << 8 | bytes[i - 1];
    return value;
}

// The bytes [position, position + count) of an array of `size` bytes lie inside it.
bool IsInside(std::size_t size, std::int64_t position, std::int64_t count)
{
    return position >= 0 && count >= 0 && position <= std::int64_t(size) &&
           count <= std::int64_t(size) - position;
}

void Require(bool inside)
{
    if (!inside)
        throw std::out_of_range("outside the byte array");
}

ByteView Part(ByteView bytes, std::int32_t position, std::int32_t count)
{
    Require(IsInside(bytes.size(), position, count));
    return bytes.subspan(std::size_t(position), std::size_t(count));
}

// Makes the array end `count` bytes after `position`.
void EndAfter(ByteArray &bytes, std::int32_t position, std::int32_t count)
{
    Require(position >= 0 && position <= std::numeric_limits<std::int32_t>::max() - count);
    bytes.resize(std::size_t(position) + std::size_t(count), 0);
}

} // namespace

std::int32_t ByteCount(ByteView bytes)
{
    return static_cast<std::int32_t>(bytes.size());
}

std::int32_t GetLong(ByteView bytes, std::int32_t position)
{
    return static_cast<std::int32_t>(Compose(Part(bytes, position, 4)));
}

std::int16_t GetInteger(ByteView bytes, std::int32_t position)
{
    return static_cast<std::int16_t>(Compose(Part(bytes, position, 2)));
}

std::int32_t ReadLong(ByteView bytes, std::int32_t &position)
{
    const std::int32_t value = GetLong(bytes, position);
    position += 4;
    return value;
}

std::uint8_t ReadByte(ByteView bytes, std::int32_t &position)
{
    const std::uint8_t value = Part(bytes, position, 1)[0];
    position += 1;
    return value;
}

void PutLong(ByteArray &bytes, std::int32_t position, std::int32_t value)
{
    Require(IsInside(bytes.size(), position, 4));
    for (int i = 0; i < 4; i++)
        bytes[std::size_t(position) + i] = static_cast<std::uint8_t>(std::uint32_t(value) >> (8 * i));
}

void AppendLong(ByteArray &bytes, std::int32_t &position, std::int32_t value)
{
    EndAfter(bytes, position, 4);
    PutLong(bytes, position, value);
    position += 4;
}

void AppendByte(ByteArray &bytes, std::int32_t &position, std::uint8_t value)
{
    EndAfter(bytes, position, 1);
    bytes.back() = value;
    position += 1;
}

void AppendBytes(ByteArray &bytes, ByteView more)
{
    if (more.empty())
        return;
    const std::size_t start = bytes.size();
    bytes.resize(start + more.size());
    std::memcpy(bytes.data() + start, more.data(), more.size());
}

void AppendBytes(ByteArray &bytes, std::string_view more)
{
    AppendBytes(bytes, ByteView(reinterpret_cast<const std::uint8_t *>(more.data()), more.size()));
}

void ByteReader::Seek(std::int64_t position)
{
    if (IsInside(m_bytes.size(), position, 0))
        m_position = position;
    else
        m_failed = true;
}

std::uint8_t ByteReader::Byte()
{
    return static_cast<std::uint8_t>(Compose(Take(1)));
}

std::uint16_t ByteReader::Word()
{
    return static_cast<std::uint16_t>(Compose(Take(2)));
}

std::int32_t ByteReader::Long()
{
    return static_cast<std::int32_t>(Compose(Take(4)));
}

ByteView ByteReader::Take(std::int64_t count)
{
    if (!IsInside(m_bytes.size(), m_position, count)) {
        m_failed = true;
        return {};
    }
    const ByteView taken = m_bytes.subspan(std::size_t(m_position), std::size_t(count));
    m_position += count;
    return taken;
}

} // namespace wb
