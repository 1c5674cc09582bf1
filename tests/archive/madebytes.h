// Bytes to pack, and files made of bytes.
#pragma once

#include "common/bytes.h"
#include "support/table.h"
#include "support/tempfolder.h"

#include <QtEndian>

#include <numeric>
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

// The bytes that a text below tests/ lists, as smalltree.txt tells.
inline ByteArray ReadHex(const std::string &name)
{
    ByteArray bytes;
    std::istringstream lines(ReadFixture(name));
    for (std::string line; std::getline(lines, line);) {
        std::istringstream tokens(line.starts_with("#") ? "" : line);
        for (std::string token; tokens >> token;) {
            const std::size_t star = token.find('*');
            const std::string unit = token.substr(0, star);
            QByteArray value = QByteArray::fromHex(QByteArray::fromStdString(unit));
            if (unit[0] == 'i')
                value = QByteArray(4, 0), qToLittleEndian(std::stoi(unit.substr(1)), value.data());
            else if (unit[0] == '\'')
                value = QByteArray::fromStdString(unit.substr(1, unit.size() - 2));
            for (int count = star == std::string::npos ? 1 : std::stoi(token.substr(star + 1)); count > 0;
                 --count)
                bytes.insert(bytes.end(), value.begin(), value.end());
        }
    }
    return bytes;
}

} // namespace wb::test
