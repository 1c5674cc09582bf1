#include "rastgl/rastgl.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>
#include <vector>

namespace
{

using Bytes = std::vector<std::uint8_t>;

struct Size {
    std::int32_t width;
    std::int32_t height;

    std::size_t Pixels() const { return std::size_t(width) * std::size_t(height); }
};

Bytes Rescale(const Bytes &source, Size from, Size to)
{
    Bytes target(to.Pixels() * 4, 0xAA);
    VTGF_Rescale(target.data(), &to.width, &to.height, source.data(), &from.width, &from.height);
    return target;
}

Bytes Repeat(const Bytes &pixel, Size size)
{
    Bytes pixels;
    for (std::size_t i = 0; i < size.Pixels(); ++i)
        pixels.insert(pixels.end(), pixel.begin(), pixel.end());
    return pixels;
}

Bytes Noise(Size size)
{
    std::mt19937 mixer(5);
    Bytes pixels(size.Pixels() * 4);
    std::ranges::generate(pixels, std::ref(mixer));
    return pixels;
}

// Opaque greys side by side.
Bytes Greys(const Bytes &greys)
{
    Bytes pixels;
    for (const std::uint8_t grey : greys)
        pixels.insert(pixels.end(), {grey, grey, grey, 255});
    return pixels;
}

TEST(Rescale, KeepsConstantPicturesAndSourcesOfTheSameSize)
{
    const Size sizes[] = {{1, 1}, {1, 9}, {8, 1}, {2, 2}, {3, 5}, {7, 4}, {64, 48}, {128, 128}, {1000, 3}};
    for (const Size from : sizes) {
        EXPECT_EQ(Rescale(Noise(from), from, from), Noise(from));
        for (const Size to : sizes)
            for (const Bytes &pixel : {Bytes{3, 200, 255, 255}, Bytes{9, 8, 7, 1}})
                ASSERT_EQ(Rescale(Repeat(pixel, from), from, to), Repeat(pixel, to))
                    << from.width << 'x' << from.height << " to " << to.width << 'x' << to.height;
    }
}

TEST(Rescale, WeighsColoursByTheirAlpha)
{
    const Bytes red = {0, 0, 255, 0, 200, 100, 0, 255, 200, 100, 0, 255, 200, 100, 0, 255};
    EXPECT_EQ(Rescale(red, {2, 2}, {1, 1}), (Bytes{200, 100, 0, 191}));
    EXPECT_EQ(Rescale({0, 0, 240, 50, 240, 0, 0, 150}, {2, 1}, {1, 1}), (Bytes{180, 0, 60, 100}));
    EXPECT_EQ(Rescale({9, 9, 9, 1, 9, 9, 9, 0, 9, 9, 9, 0}, {1, 3}, {1, 1}), Bytes(4));
    // Growing never shows the unseen red either.
    const Bytes grown = Rescale(red, {2, 2}, {16, 16});
    for (std::size_t i = 0; i < grown.size(); i += 4)
        ASSERT_EQ(grown[i + 2], 0) << "pixel " << i / 4;
}

TEST(Rescale, AveragesWhatAPixelCovers)
{
    // Three to two: each takes one and a half, bottom and top rows alike.
    EXPECT_EQ(Rescale(Greys({0, 90, 240}), {3, 1}, {2, 1}), Greys({30, 190}));
    EXPECT_EQ(Rescale(Greys({0, 90, 240}), {1, 3}, {1, 2}), Greys({30, 190}));

    constexpr Size From = {60, 36};
    Bytes noise = Noise(From);
    for (std::size_t alpha = 3; alpha < noise.size(); alpha += 4)
        noise[alpha] = 255;
    for (const int divisor : {2, 3, 4, 6, 12}) {
        const Size to = {From.width / divisor, From.height / divisor};
        std::vector<double> means(to.Pixels() * 4);
        for (int i = 0; i < int(noise.size()); ++i) {
            const int x = i / 4 % From.width / divisor, y = i / 4 / From.width / divisor;
            means[std::size_t((y * to.width + x) * 4 + i % 4)] += double(noise[i]) / (divisor * divisor);
        }
        const Bytes shrunk = Rescale(noise, From, to);
        for (std::size_t i = 0; i < shrunk.size(); ++i)
            ASSERT_NEAR(shrunk[i], means[i], 0.5 + 1e-6);
    }
}

TEST(Rescale, GrowsSmoothly)
{
    const Bytes ramp = Rescale(Greys({0, 80, 160, 240}), {4, 1}, {64, 1});
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
    EXPECT_EQ(Rescale(Repeat({7, 130, 255, 255}, Long), Long, {1, 1}), (Bytes{7, 130, 255, 255}));
    EXPECT_EQ(Rescale({}, {0, 3}, {1, 1}), Bytes(4, 0xAA)) << "untouched";
    EXPECT_EQ(Rescale({1, 2, 3, 4}, {1, 1}, {0, 7}), Bytes());
}

} // namespace
