// Bytes to pack, and files made of bytes.
#pragma once

#include "common/bytes.h"
#include "platform/fileio.h"
#include "support/tempfolder.h"

#include <random>

namespace wb::test
{

// So many bytes: a text of few letters that shrinks, or noise that does not.
inline ByteArray MakeBytes(std::size_t size, bool isNoise = false)
{
    std::minstd_rand random(unsigned(size) + 1);
    ByteArray bytes(size);
    for (std::uint8_t &byte : bytes)
        byte = static_cast<std::uint8_t>(isNoise ? random() >> 8 : 'a' + random() % 3);
    return bytes;
}

// Where a reader must not count on zeroes.
inline ByteArray UsedBytes()
{
    return ByteArray(300'000, 0xEE);
}

// Changes one to four bytes.
inline void Damage(ByteArray &bytes, std::minstd_rand &random)
{
    for (auto count = random() % 4 + 1; count > 0; --count)
        bytes[random() % bytes.size()] = static_cast<std::uint8_t>(random() >> (random() % 2 * 8));
}

// The bytes as a file, open for reading.
inline InputFile OpenMade(const TempFolder &folder, ByteView bytes)
{
    folder.Put("made", TextOf(bytes));
    InputFile file;
    file.Open(folder.Native("made"));
    return file;
}

} // namespace wb::test
