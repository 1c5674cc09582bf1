#include "platform/ansi.h"
#include "platform/nativepath.h"

#include <algorithm>

namespace wb
{

namespace
{

constexpr char16_t StandIn = 0xF000;

// ASCII characters that a file of Linux may have in its name and a path of ours may not.
bool IsReserved(char32_t character)
{
    return character == U'\\' || character == U'*' || character == U'?' || character == U':';
}

// Whether the character stands for the byte below U+F000. A file whose real name holds such a character has
// it spelled byte by byte.
bool IsStandIn(char32_t character)
{
    const char32_t byte = character - StandIn;
    return character >= StandIn && byte <= 0xFF && (byte >= 0x80 || IsReserved(byte));
}

// The length of the well-formed UTF-8 sequence (RFC 3629) that `bytes` begins with, and its character; 0 when
// it begins with none.
std::size_t DecodeUtf8(std::string_view bytes, char32_t &character)
{
    const auto at = [&](std::size_t index) { return char32_t(std::uint8_t(bytes[index])); };
    const char32_t lead = at(0);
    const std::size_t length = lead < 0x80   ? 1
                               : lead < 0xC2 ? 0
                               : lead < 0xE0 ? 2
                               : lead < 0xF0 ? 3
                               : lead < 0xF5 ? 4
                                             : 0;
    if (length == 0 || bytes.size() < length)
        return 0;
    constexpr char32_t leadBits[] = {0, 0x7F, 0x1F, 0x0F, 0x07};
    character = lead & leadBits[length];
    for (std::size_t index = 1; index < length; ++index) {
        if ((at(index) & 0xC0) != 0x80)
            return 0;
        character = character << 6 | (at(index) & 0x3F);
    }
    constexpr char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool isSurrogate = character >= 0xD800 && character <= 0xDFFF;
    return character >= smallest[length] && character <= 0x10FFFF && !isSurrogate ? length : 0;
}

bool IsPlain(std::string_view name)
{
    return std::all_of(name.begin(), name.end(),
                       [](char byte) { return std::uint8_t(byte) < 0x80 && !IsReserved(char32_t(byte)); });
}

QString FromBytes(std::string_view bytes, bool isName)
{
    QString text;
    text.reserve(qsizetype(bytes.size()));
    while (!bytes.empty()) {
        char32_t character = 0;
        std::size_t length = DecodeUtf8(bytes, character);
        if (length == 0 || (isName && IsReserved(character)) || IsStandIn(character)) {
            length = 1;
            text += QChar(char16_t(StandIn + std::uint8_t(bytes[0])));
        } else {
            text += QStringView(QChar::fromUcs4(character));
        }
        bytes.remove_prefix(length);
    }
    return text;
}

} // namespace

QString FromNativeName(std::string_view name)
{
    return IsPlain(name) ? QString::fromLatin1(name.data(), qsizetype(name.size())) : FromBytes(name, true);
}

std::string ToNativeName(QStringView name)
{
    const auto isRefused = [](QChar unit) {
        return unit.isNull() || unit == u'/' || IsReserved(unit.unicode());
    };
    if (name == u"." || name == u".." || std::any_of(name.begin(), name.end(), isRefused))
        return {};
    return ToNativeText(name);
}

QString FromNativeText(std::string_view bytes)
{
    return FromBytes(bytes, false);
}

std::string ToNativeText(QStringView text)
{
    std::string native;
    native.reserve(std::size_t(text.size()));
    for (qsizetype index = 0; index < text.size(); ++index) {
        const char16_t unit = text[index].unicode();
        if (unit < 0x80) {
            native += char(unit);
        } else if (IsStandIn(unit)) {
            native += char(unit - StandIn);
        } else {
            const bool isPair = text[index].isHighSurrogate() && index + 1 < text.size();
            native += text.sliced(index, isPair ? 2 : 1).toUtf8().toStdString();
            index += isPair ? 1 : 0;
        }
    }
    return native;
}

std::string NativeChild(const std::string &folder, QStringView name)
{
    const std::string native = ToNativeName(name);
    if (native.empty() || folder.empty())
        return {};
    return folder.ends_with('/') ? folder + native : folder + '/' + native;
}

QString DisplayName(const QString &name)
{
    const auto isStandIn = [](QChar character) { return IsStandIn(character.unicode()); };
    if (std::none_of(name.begin(), name.end(), isStandIn))
        return name;
    QString shown = name;
    for (QChar &character : shown) {
        const auto byte = std::uint8_t(character.unicode());
        if (isStandIn(character))
            character = FromAnsi(ByteView(&byte, 1))[0];
    }
    return shown;
}

} // namespace wb
