// Platform colour values (red in the low byte, then green, then blue) and Qt's colours.
#pragma once

#include <QColor>

#include <cstdint>

namespace wb
{

inline QColor ToQColor(std::int32_t colour)
{
    return {colour & 0xFF, colour >> 8 & 0xFF, colour >> 16 & 0xFF};
}

inline std::int32_t FromQColor(const QColor &colour)
{
    return colour.red() | colour.green() << 8 | colour.blue() << 16;
}

} // namespace wb
