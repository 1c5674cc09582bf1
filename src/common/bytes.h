// Little-endian values in byte arrays.
#pragma once

#include "common/bytearray.h"

#include <cstdint>
#include <string_view>

namespace wb
{

// --- For bytes whose size the caller knows
//
// Positions count bytes from 0. A get, read or put that does not lie wholly inside the array, and an append
// at a negative position, is a fault of the caller and throws std::out_of_range with nothing changed.

std::int32_t ByteCount(ByteView bytes);

std::int32_t GetLong(ByteView bytes, std::int32_t position);
std::int16_t GetInteger(ByteView bytes, std::int32_t position);

// As the gets, and move the position past what they read.
std::int32_t ReadLong(ByteView bytes, std::int32_t &position);
std::uint8_t ReadByte(ByteView bytes, std::int32_t &position);

void PutLong(ByteArray &bytes, std::int32_t position, std::int32_t value);

// Make the array end right after the value: a longer array is cut, a gap before `position` is filled with
// zeroes. The position moves to the new end.
void AppendLong(ByteArray &bytes, std::int32_t &position, std::int32_t value);
void AppendByte(ByteArray &bytes, std::int32_t &position, std::uint8_t value);

// Adds bytes at the end, of any number.
void AppendBytes(ByteArray &bytes, ByteView more);
void AppendBytes(ByteArray &bytes, std::string_view more);

// --- For bytes from outside

// A cursor that cannot leave its bytes. Whatever does not lie wholly inside them reads as 0 (or as no bytes),
// leaves the cursor where it is and is remembered: check Failed() once after a group of reads.
class ByteReader
{
public:
    explicit ByteReader(ByteView bytes) : m_bytes(bytes) {}

    bool Failed() const { return m_failed; }
    std::int64_t Position() const { return m_position; }
    std::int64_t Remaining() const { return std::int64_t(m_bytes.size()) - m_position; }

    // Positions from 0 to the end are inside.
    void Seek(std::int64_t position);

    std::uint8_t Byte();
    std::uint16_t Word();
    std::int32_t Long();

    // The next `count` bytes.
    ByteView Take(std::int64_t count);

private:
    ByteView m_bytes;
    std::int64_t m_position = 0;
    bool m_failed = false;
};

} // namespace wb
