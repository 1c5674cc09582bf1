#include "app/memorygauge.h"

#include <gtest/gtest.h>

namespace wb
{

namespace
{

constexpr std::int64_t Gigabyte = std::int64_t(1) << 30;

TEST(MemoryGauge, ShowsMegabytesInUseAndTheWholeTip)
{
    const MemoryGauge gauge = GaugeOf({Gigabyte, 200 << 20});
    EXPECT_EQ(1024, gauge.Maximum);
    EXPECT_EQ(824, gauge.Value);
    EXPECT_EQ(QStringLiteral("Свободно памяти: 204800 Кб (200 Мб) / 1048576 Кб (1024 Мб)"), gauge.Tip);
    EXPECT_EQ(65536, GaugeOf({64 * Gigabyte, 0}).Maximum);
}

TEST(MemoryGauge, BlinksFrom97PercentOn)
{
    constexpr std::int64_t Percent = 100 << 20; // of 10,000 MB
    EXPECT_FALSE(GaugeOf({100 * Percent, 4 * Percent}).Blinks);
    EXPECT_TRUE(GaugeOf({100 * Percent, 3 * Percent}).Blinks);
    EXPECT_FALSE(GaugeOf({0, 0}).Blinks);
}

TEST(MemoryGauge, BlinkingGoesToRedAndBackToTheSteadyColour)
{
    std::int32_t colour = SteadyGaugeColour();
    bool red = false;
    for (int step = 0; step < 8; ++step) {
        colour = NextBlinkColour(colour);
        red = red || colour == 0x0000C8;
    }
    EXPECT_TRUE(red);
    EXPECT_EQ(SteadyGaugeColour(), colour);
    EXPECT_EQ(SteadyGaugeColour(), NextBlinkColour(0x123456));
}

} // namespace

} // namespace wb
