#include "common/text.h"

namespace wb
{

QString ZeroPad(std::int64_t number, int width)
{
    return QString::number(number).rightJustified(width, u'0');
}

std::int32_t HexToLong(QStringView text)
{
    if (text.size() > 8)
        return 0;
    std::uint32_t value = 0;
    for (const QChar character : text) {
        const char16_t code = character.unicode();
        const bool isDigit = code >= u'0' && code <= u'9';
        const char16_t letter = char16_t(code | 0x20);
        if (!isDigit && (letter < u'a' || letter > u'f'))
            return 0;
        value = value << 4 | (isDigit ? code - u'0' : letter - u'a' + 10U);
    }
    return std::int32_t(value);
}

void FilterDigitKey(int &keyCode)
{
    constexpr int backspace = 8;
    if (keyCode != backspace && (keyCode < '0' || keyCode > '9'))
        keyCode = 0;
}

} // namespace wb
