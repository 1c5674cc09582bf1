// The ANSI code page: Windows-1251, one byte a character (WHATWG Encoding, index windows-1251).
#pragma once

#include "common/bytearray.h"

#include <QString>

namespace wb
{

// Byte 98h, which the code page leaves free, is U+0098.
QString FromAnsi(ByteView bytes);

// A character that the code page lacks becomes "?".
ByteArray ToAnsi(QStringView text);

} // namespace wb
