#include "rastgl/canvas.h"
#include "rastgl/rastgl.h"

#include <gtest/gtest.h>

namespace
{

using Colours = std::vector<std::uint32_t>;

Canvas Rescale(const Canvas &source, int width, int height)
{
    Canvas target = Flat(width, height, 0xAAAAAAAA);
    VTGF_Rescale(target.Bytes(), &target.width, &target.height, source.Bytes(), &source.width,
                 &source.height);
    return target;
}

TEST(Rescale, KeepsConstantPicturesAndSourcesOfTheSameSize)
{
    const std::pair<int, int> sizes[] = {{1, 1}, {1, 9},   {8, 1},     {2, 2},   {3, 5},
                                         {7, 4}, {64, 48}, {128, 128}, {1000, 3}};
    for (const auto &[width, height] : sizes) {
        const Canvas noise = Noise(width, height, 5);
        EXPECT_EQ(Rescale(noise, width, height), noise);
        for (const auto &[toWidth, toHeight] : sizes)
            for (const std::uint32_t pixel : {0xFFFFC803U, 0x01070809U})
                ASSERT_EQ(Rescale(Flat(width, height, pixel), toWidth, toHeight),
                          Flat(toWidth, toHeight, pixel))
                    << width << 'x' << height;
    }
}

TEST(Rescale, WeighsColoursByTheirAlpha)
{
    const Canvas red = {2, 2, {0x00FF0000, 0xFF0064C8, 0xFF0064C8, 0xFF0064C8}};
    EXPECT_EQ(Rescale(red, 1, 1), Flat(1, 1, 0xBF0064C8));
    EXPECT_EQ(Rescale({2, 1, {0x32F00000, 0x960000F0}}, 1, 1), Flat(1, 1, 0x643C00B4));
    EXPECT_EQ(Rescale({1, 3, {0x01090909, 0x00090909, 0x00090909}}, 1, 1), Flat(1, 1, 0));
    // Growing never shows the unseen red either.
    for (const std::uint32_t colour : Rescale(red, 16, 16).colours)
        ASSERT_EQ(colour >> 16 & 0xFF, 0U);
}

TEST(Rescale, AveragesWhatAPixelCovers)
{
    // Three to two: each takes one and a half, bottom and top rows alike.
    const Colours three = {0xFF000000, 0xFF5A5A5A, 0xFFF0F0F0};
    const Colours two = {0xFF1E1E1E, 0xFFBEBEBE};
    EXPECT_EQ(Rescale({3, 1, three}, 2, 1).colours, two);
    EXPECT_EQ(Rescale({1, 3, three}, 1, 2).colours, two);

    Canvas noise = Noise(60, 36, 5, 0xFF000000);
    for (const int divisor : {2, 3, 4, 6, 12}) {
        Canvas shrunk = Rescale(noise, noise.width / divisor, noise.height / divisor);
        for (int at = 0; at < shrunk.width * shrunk.height * 4; ++at) {
            const int x = at / 4 % shrunk.width, y = at / 4 / shrunk.width, shift = at % 4 * 8;
            unsigned sum = 0;
            for (int part = 0; part < divisor * divisor; ++part)
                sum += noise.At(x * divisor + part % divisor, y * divisor + part / divisor) >> shift & 0xFF;
            ASSERT_NEAR(shrunk.At(x, y) >> shift & 0xFF, double(sum) / (divisor * divisor), 0.5 + 1e-6);
        }
    }
}

TEST(Rescale, GrowsSmoothly)
{
    Canvas ramp = Rescale({4, 1, {0xFF000000, 0xFF505050, 0xFFA0A0A0, 0xFFF0F0F0}}, 64, 1);
    const auto grey = [&ramp](int x) { return int(ramp.At(x, 0) & 0xFF); };
    for (int x = 1; x < 64; ++x)
        ASSERT_LE(std::abs(grey(x) - grey(x - 1)), 8); // 5 on average
    // Between the second and the third sample all four lie on a line.
    for (int x = 24; x < 40; ++x)
        ASSERT_NEAR(grey(x), 80 + 5 * (x + 0.5 - 24), 0.51) << x;
    EXPECT_NEAR(grey(0), 0, 8);
    EXPECT_NEAR(grey(63), 240, 8);
}

TEST(Rescale, LongRowsAndEmptyPictures)
{
    // So many weights that float sums of them would fall short.
    EXPECT_EQ(Rescale(Flat(5'000'000, 1, 0xFFFF8207), 1, 1), Flat(1, 1, 0xFFFF8207));
    EXPECT_EQ(Rescale(Flat(0, 3), 1, 1), Flat(1, 1, 0xAAAAAAAA)) << "untouched";
    EXPECT_EQ(Rescale(Flat(1, 1), 0, 7), Flat(0, 7));
}

} // namespace
