// What the memory gauge shows.
#pragma once

#include "platform/memorystatus.h"

#include <QString>

#include <cstdint>

namespace wb
{

struct MemoryGauge {
    std::int32_t Maximum = 0; // MB
    std::int32_t Value = 0;   // MB in use
    QString Tip;
    bool Blinks = false; // almost nothing is left
};

MemoryGauge GaugeOf(const MemoryStatus &memory);

// A platform colour value for the bar: steady, or the next step of the blinking after `colour`.
std::int32_t SteadyGaugeColour();
std::int32_t NextBlinkColour(std::int32_t colour);

} // namespace wb
