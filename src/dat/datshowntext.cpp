#include "dat/datshowntext.h"

#include <algorithm>
#include <string_view>

namespace wb
{

namespace
{

// Units that need a sign, and their signs, in the same order. The signs are in the interface's font and
// hardly occur in texts; the letters are those of the keys that make the character with Ctrl.
constexpr std::u16string_view Units =
    u"\x01\x02\x03\x04\x05\x06\x07\x08\x09\x0A\x0B\x0C\x0D\x0E\x0F\x10\x11\x12\x13\x14\x15\x16\x17\x18\x19"
    u"\x1A\x1B\x1C\x1D\x1E\x1F\x7F\x2028\x2029";
constexpr std::u16string_view Signs = u"ⒶⒷⒸⒹⒺⒻⒼ⌫⇥↵ⓀⓁ⇤ⓃⓄⓅⓆⓇⓈⓉⓊⓋⓌⓍⓎⓏ⎋①②③④⌦↴↳";
static_assert(Units.size() == Signs.size());

constexpr char16_t LowestSign = std::ranges::min(Signs);
constexpr char16_t HighestSign = std::ranges::max(Signs);
constexpr char32_t PrivatePlane = 0x100000;

// What stands at the place in `to` that `unit` has in `from`; 0 when it has none.
char16_t Counterpart(char16_t unit, std::u16string_view from, std::u16string_view to)
{
    const auto place = from.find(unit);
    return place == from.npos ? u'\0' : to[place];
}

char16_t SignOf(char16_t unit)
{
    const bool isCommon = unit >= u' ' && unit < 0x7F; // nearly all of a text
    return isCommon ? u'\0' : Counterpart(unit, Units, Signs);
}

char16_t StoodFor(char16_t unit)
{
    return unit >= LowestSign && unit <= HighestSign ? Counterpart(unit, Signs, Units) : u'\0';
}

// The first half of a character of the private plane.
bool IsPrivateHigh(char16_t unit)
{
    return unit >= QChar::highSurrogate(PrivatePlane) && QChar::isHighSurrogate(unit);
}

// 0xFDD0 and 0xFDD1 are what the window system's texts take for the edges of frames.
bool NeedsPrivate(char16_t unit)
{
    return unit == 0 || unit == 0xFDD0 || unit == 0xFDD1 || IsPrivateHigh(unit) || StoodFor(unit) != 0;
}

} // namespace

QString ShownText(QStringView text)
{
    QString shown;
    shown.reserve(text.size());
    for (const QChar character : text) {
        const char16_t unit = character.unicode();
        if (NeedsPrivate(unit)) {
            shown += QChar(QChar::highSurrogate(PrivatePlane + unit));
            shown += QChar(QChar::lowSurrogate(PrivatePlane + unit));
        } else {
            const char16_t sign = SignOf(unit);
            shown += sign != 0 ? QChar(sign) : character;
        }
    }
    return shown;
}

QString MeantText(QStringView shown)
{
    QString text;
    text.reserve(shown.size());
    for (qsizetype at = 0; at < shown.size(); ++at) {
        const char16_t unit = shown[at].unicode();
        if (IsPrivateHigh(unit) && at + 1 < shown.size() && shown[at + 1].isLowSurrogate()) {
            text += QChar(char16_t(QChar::surrogateToUcs4(unit, shown[++at].unicode())));
        } else {
            const char16_t meant = StoodFor(unit);
            text += meant != 0 ? QChar(meant) : shown[at];
        }
    }
    return text;
}

} // namespace wb
