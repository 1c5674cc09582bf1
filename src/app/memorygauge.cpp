#include "app/memorygauge.h"

#include "services/uitext.h"

#include <algorithm>
#include <array>

namespace wb
{

namespace
{

constexpr std::int64_t Kilobyte = 1024;
constexpr std::int64_t Megabyte = Kilobyte * 1024;
constexpr std::int64_t BlinkingLoad = 97; // percent

// From blue to red and back.
constexpr std::array<std::int32_t, 8> BlinkColours = {0xE79B4D, 0xAD746C, 0x734D8B, 0x3A27A9,
                                                      0x0000C8, 0x3A27A8, 0x734D8A, 0xAD746B};

QString Amount(std::int64_t bytes)
{
    return QStringLiteral("%1 %2 (%3 %4)")
        .arg(bytes / Kilobyte)
        .arg(UiText(TextKilobytes))
        .arg(bytes / Megabyte)
        .arg(UiText(TextMegabytes));
}

} // namespace

MemoryGauge GaugeOf(const MemoryStatus &memory)
{
    MemoryGauge gauge;
    gauge.Maximum = static_cast<std::int32_t>(memory.TotalBytes / Megabyte);
    gauge.Value = static_cast<std::int32_t>((memory.TotalBytes - memory.AvailableBytes) / Megabyte);
    gauge.Tip = UiText(TextFreeMemory) + Amount(memory.AvailableBytes) + QStringLiteral(" / ") +
                Amount(memory.TotalBytes);
    gauge.Blinks = gauge.Maximum > 0 && std::int64_t(gauge.Value) * 100 / gauge.Maximum >= BlinkingLoad;
    return gauge;
}

std::int32_t SteadyGaugeColour()
{
    return BlinkColours.front();
}

std::int32_t NextBlinkColour(std::int32_t colour)
{
    const auto last = BlinkColours.end() - 1;
    const auto step = std::find(BlinkColours.begin(), last, colour);
    return step == last ? BlinkColours.front() : *(step + 1);
}

} // namespace wb
