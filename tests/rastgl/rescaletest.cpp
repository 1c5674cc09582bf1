#include "rastgl/rastgl.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <random>
#include <vector>

namespace
{

using Bytes = std::vector<std::uint8_t>;

struct Size {
    std::int32_t width;
    std::int32_t height;

    std::size_t Bytes() const { return std::size_t(width) * std::size_t(height) * 4; }
};

Bytes Rescale(const Bytes &source, Size from, Size to)
{
    Bytes target(to.Bytes(), 0xAA);
    VTGF_Rescale(target.data(), &to.width, &to.height, source.data(), &from.width, &from.height);
    return target;
}

Bytes Repeat(const std::array<std::uint8_t, 4> &pixel, Size size)
{
    Bytes pixels;
    for (std::size_t i = 0; i < size.Bytes(); ++i)
        pixels.push_back(pixel[i % 4]);
    return pixels;
}

Bytes Noise(Size size, bool opaque)
{
    std::mt19937 mixer(5);
    Bytes pixels(size.Bytes());
    for (std::size_t i = 0; i < pixels.size(); ++i)
        pixels[i] = opaque && i % 4 == 3 ? 255 : std::uint8_t(mixer());
    return pixels;
}

constexpr Size Sizes[] = {{1, 1}, {1, 9}, {8, 1}, {2, 2}, {3, 5}, {7, 4}, {64, 48}, {128, 128}, {1000, 3}};

TEST(Rescale, KeepsConstantPicturesAndSourcesOfTheSameSize)
{
    for (const Size from : Sizes) {
        const Bytes noise = Noise(from, false);
        EXPECT_EQ(Rescale(noise, from, from), noise);
        for (const Size to : Sizes) {
            for (const std::array<std::uint8_t, 4> pixel :
                 {std::array<std::uint8_t, 4>{3, 200, 255, 255}, {9, 8, 7, 1}})
                ASSERT_EQ(Rescale(Repeat(pixel, from), from, to), Repeat(pixel, to))
                    << from.width << 'x' << from.height << " to " << to.width << 'x' << to.height;
        }
    }
}

TEST(Rescale, WeighsColoursByTheirAlpha)
{
    const Bytes red = {0, 0, 255, 0, 200, 100, 0, 255, 200, 100, 0, 255, 200, 100, 0, 255};
    EXPECT_EQ(Rescale(red, {2, 2}, {1, 1}), (Bytes{200, 100, 0, 191}));
    const Bytes unequal = {0, 0, 240, 50, 240, 0, 0, 150};
    EXPECT_EQ(Rescale(unequal, {2, 1}, {1, 1}), (Bytes{180, 0, 60, 100}));
    EXPECT_EQ(Rescale({9, 9, 9, 1, 9, 9, 9, 0, 9, 9, 9, 0}, {1, 3}, {1, 1}), (Bytes{0, 0, 0, 0}));
    // Growing never shows the unseen red either.
    const Bytes grown = Rescale(red, {2, 2}, {16, 16});
    for (std::size_t i = 0; i < grown.size(); i += 4)
        ASSERT_EQ(grown[i + 2], 0) << "pixel " << i / 4;
}

TEST(Rescale, AveragesWhatAPixelCovers)
{
    // Three columns to two: each takes one and a half, bottom and top rows alike.
    const Bytes columns = {0, 0, 0, 255, 90, 90, 90, 255, 240, 240, 240, 255};
    EXPECT_EQ(Rescale(columns, {3, 1}, {2, 1}), (Bytes{30, 30, 30, 255, 190, 190, 190, 255}));
    EXPECT_EQ(Rescale(columns, {1, 3}, {1, 2}), (Bytes{30, 30, 30, 255, 190, 190, 190, 255}));

    constexpr Size From = {60, 36};
    const Bytes noise = Noise(From, true);
    for (const int divisor : {2, 3, 4, 6, 12}) {
        const Size to = {From.width / divisor, From.height / divisor};
        const Bytes shrunk = Rescale(noise, From, to);
        for (std::size_t i = 0; i < shrunk.size(); ++i) {
            const std::size_t row = i / 4 / std::size_t(to.width);
            const std::size_t column = i / 4 % std::size_t(to.width);
            int sum = 0;
            for (std::size_t y = 0; y < std::size_t(divisor); ++y) {
                for (std::size_t x = 0; x < std::size_t(divisor); ++x)
                    sum += noise[((row * divisor + y) * From.width + column * divisor + x) * 4 + i % 4];
            }
            ASSERT_NEAR(shrunk[i], double(sum) / (divisor * divisor), 0.5 + 1e-6);
        }
    }
}

TEST(Rescale, GrowsSmoothly)
{
    const Bytes ramp =
        Rescale({0, 0, 0, 255, 80, 80, 80, 255, 160, 160, 160, 255, 240, 240, 240, 255}, {4, 1}, {64, 1});
    for (std::size_t i = 1; i < 64; ++i)
        ASSERT_LE(std::abs(ramp[4 * i] - ramp[4 * (i - 1)]), 8); // 5 on average
    // Between the second and the third sample all four lie on a line.
    for (std::size_t i = 24; i < 40; ++i)
        ASSERT_NEAR(ramp[4 * i], 80 + 5 * (double(i) + 0.5 - 24), 0.51) << i;
    EXPECT_NEAR(ramp.front(), 0, 8);
    EXPECT_NEAR(ramp[4 * 63], 240, 8);
}

TEST(Rescale, LongRowsAndEmptyPictures)
{
    // So many weights that float sums of them would fall short.
    constexpr Size Long = {5'000'000, 1};
    const Bytes grey = Rescale(Repeat({7, 130, 255, 255}, Long), Long, {1, 1});
    EXPECT_EQ(grey, (Bytes{7, 130, 255, 255}));

    const Bytes untouched(4, 0xAA);
    EXPECT_EQ(Rescale({}, {0, 3}, {1, 1}), untouched);
    EXPECT_EQ(Rescale({1, 2, 3, 4}, {1, 1}, {0, 7}), Bytes());
}

} // namespace
