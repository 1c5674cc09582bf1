// Numbers and keys as text.
#pragma once

#include <QString>
#include <cstdint>

namespace wb
{

// `number` in decimal with "0" put in front until it has at least `width` characters; a sign is one of them.
QString ZeroPad(std::int64_t number, int width);

// The value of up to 8 hexadecimal digits of either case; 8 may give a negative value. 0 for any other text.
std::int32_t HexToLong(QStringView text);

// Sets `keyCode`, a character code, to 0 unless it is Backspace (8) or a decimal digit.
void FilterDigitKey(int &keyCode);

} // namespace wb
