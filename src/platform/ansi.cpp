#include "platform/ansi.h"

#include <array>

namespace wb
{

namespace
{

// What the bytes 80h to FFh stand for.
constexpr std::array<char16_t, 128> UpperHalf = [] {
    std::array<char16_t, 128> table = {
        0x0402, 0x0403, 0x201A, 0x0453, 0x201E, 0x2026, 0x2020, 0x2021, // 80
        0x20AC, 0x2030, 0x0409, 0x2039, 0x040A, 0x040C, 0x040B, 0x040F, // 88
        0x0452, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, // 90
        0x0098, 0x2122, 0x0459, 0x203A, 0x045A, 0x045C, 0x045B, 0x045F, // 98
        0x00A0, 0x040E, 0x045E, 0x0408, 0x00A4, 0x0490, 0x00A6, 0x00A7, // A0
        0x0401, 0x00A9, 0x0404, 0x00AB, 0x00AC, 0x00AD, 0x00AE, 0x0407, // A8
        0x00B0, 0x00B1, 0x0406, 0x0456, 0x0491, 0x00B5, 0x00B6, 0x00B7, // B0
        0x0451, 0x2116, 0x0454, 0x00BB, 0x0458, 0x0405, 0x0455, 0x0457, // B8
    };
    // C0 to FF are the Russian alphabet in its order, without Ё.
    for (std::size_t index = 64; index < table.size(); ++index)
        table[index] = char16_t(0x0410 + index - 64);
    return table;
}();

std::uint8_t ByteOf(char16_t character)
{
    if (character < 0x80)
        return std::uint8_t(character);
    for (std::size_t index = 0; index < UpperHalf.size(); ++index) {
        if (UpperHalf[index] == character)
            return std::uint8_t(0x80 + index);
    }
    return '?';
}

} // namespace

QString FromAnsi(ByteView bytes)
{
    QString text(qsizetype(bytes.size()), Qt::Uninitialized);
    QChar *target = text.data();
    for (const std::uint8_t byte : bytes)
        *target++ = byte < 0x80 ? QLatin1Char(char(byte)) : QChar(UpperHalf[byte - 0x80]);
    return text;
}

ByteArray ToAnsi(QStringView text)
{
    ByteArray bytes;
    bytes.reserve(std::size_t(text.size()));
    for (qsizetype index = 0; index < text.size(); ++index) {
        // Two surrogates are one character, so they become one "?".
        const bool isPair =
            text[index].isHighSurrogate() && index + 1 < text.size() && text[index + 1].isLowSurrogate();
        bytes.push_back(ByteOf(text[index].unicode()));
        index += isPair ? 1 : 0;
    }
    return bytes;
}

} // namespace wb
