#include "rastgl/rastgl.h"
#include "rastgl/rows565.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>
#include <vector>

namespace
{

using Bytes = std::vector<std::uint8_t>;
using Pixels = std::vector<std::uint32_t>; // bottom row first

Pixels RandomPixels(int count, unsigned seed)
{
    std::mt19937 random(seed);
    Pixels pixels(static_cast<std::size_t>(count));
    std::ranges::generate(pixels, std::ref(random));
    return pixels;
}

std::uint8_t *BytesOf(Pixels &pixels)
{
    return reinterpret_cast<std::uint8_t *>(pixels.data());
}

std::uint32_t &At(Pixels &pixels, int width, int height, int x, int y)
{
    return pixels[std::size_t((height - 1 - y) * width + x)];
}

TEST(Buffers, SplitsIntoLayers)
{
    Pixels source(256), opaque(256);
    for (unsigned alpha = 0; alpha < 256; alpha++)
        source[alpha] = alpha << 24 | 0x090909;
    Pixels partly = source;
    partly[0] = partly[255] = 0;
    opaque[255] = source[255];
    const auto split = [&source](auto copy) {
        const std::int32_t all = 1024, most = 1000; // the smaller count limits what is written
        Pixels target(256, 77);
        copy(BytesOf(target), &all, BytesOf(source), &most);
        copy(BytesOf(target), &most, BytesOf(source), &all);
        EXPECT_EQ(target[250], 77U);
        copy(BytesOf(target), &all, BytesOf(source), &all);
        return target;
    };
    EXPECT_EQ(split(VTGF_TransBuf_Copy_32), opaque);
    EXPECT_EQ(split(VTGF_TransAlphaBuf_Copy_32), partly);
    EXPECT_EQ(split(VTGF_AlphaBuf_Copy_32), partly);
}

TEST(Buffers, CopiesTheCommonPart)
{
    std::mt19937 random(5);
    const auto within = [&random](int low, int high) {
        return low + std::int32_t(random() % unsigned(high - low + 1));
    };
    for (unsigned round = 0; round < 400; round++) {
        const bool flip = round % 2 == 1;
        const std::int32_t tw = within(1, 9), th = within(1, 9), sw = within(1, 9), sh = within(1, 9);
        const std::int32_t tx = within(-10, 10), ty = within(-10, 10);
        const std::int32_t sx = within(-10, 10), sy = within(-10, 10);
        Pixels source = RandomPixels(sw * sh, round);
        Pixels target = RandomPixels(tw * th, round + 1000);
        Pixels expected = target;
        for (int y = std::max(ty, 0); y < th; y++)
            for (int x = std::max(tx, 0); x < tw; x++) {
                const int fromX = sx + x - tx, fromY = sy + y - ty;
                if (fromX >= 0 && fromY >= 0 && fromX < sw && fromY < sh)
                    At(expected, tw, th, x, y) = At(source, sw, sh, fromX, flip ? sh - 1 - fromY : fromY);
            }
        (flip ? VTGF_CopyClip_Flip_32 : VTGF_CopyClip_32)(BytesOf(target), &tx, &ty, &tw, &th,
                                                          BytesOf(source), &sx, &sy, &sw, &sh);
        ASSERT_EQ(target, expected) << round;
    }
    const std::int32_t far = INT32_MIN, one = 1, none = 0;
    Pixels pixel = {7};
    VTGF_CopyClip_32(BytesOf(pixel), &far, &far, &one, &one, BytesOf(pixel), &far, &none, &one, &one);
    VTGF_CopyClip_32(BytesOf(pixel), &none, &none, &none, &one, nullptr, &none, &none, &far, &far);
    EXPECT_EQ(pixel, Pixels{7});
}

TEST(Buffers, FindsBounds)
{
    for (unsigned round = 0; round < 200; round++) {
        const std::int32_t width = 1 + round % 90, height = 1 + round % 7;
        Pixels pixels = RandomPixels(width * height, round);
        for (std::uint32_t &pixel : pixels) // every third round mostly nothing, so that bounds are narrow
            if (pixel >> 24 < (round % 3 == 0 ? 250 : 190))
                pixel &= 0xFFFFFF;
        std::array<int, 4> expected = {width, height, 0, 0};
        for (int y = 0; y < height; y++)
            for (int x = 0; x < width; x++)
                if (At(pixels, width, height, x, y) >> 24 != 0)
                    expected = {std::min(expected[0], x), std::min(expected[1], y),
                                std::max(expected[2], x + 1), std::max(expected[3], y + 1)};
        if (expected[2] == 0)
            expected = {};
        const auto find = [&](auto edge) { return edge(BytesOf(pixels), &width, &height); };
        const std::array<int, 4> found = {find(VTGF_GetStartX_32), find(VTGF_GetStartY_32),
                                          find(VTGF_GetFinishX_32), find(VTGF_GetFinishY_32)};
        ASSERT_EQ(found, expected) << round;
    }
}

// Every width around the blocks that the wide instructions take, against single pixels.
TEST(Buffers, ConvertsAndTurnsPlanes)
{
    Pixels palette = RandomPixels(256, 3);
    const std::int32_t height = 2;
    for (std::int32_t width = 0; width < 200; width++) {
        const int count = width * height;
        Pixels pixels = RandomPixels(count, unsigned(width));
        Pixels turned(pixels.size()), wide(pixels.size()), expanded(pixels.size());
        Bytes plane(pixels.size() * 2), premultiplied(pixels.size() * 2);
        const Bytes indexes(BytesOf(pixels), BytesOf(pixels) + count);
        VTGF_VFlipBuf_Copy_32(BytesOf(turned), BytesOf(pixels), &width, &height);
        VTGF_ConvertRGBAto565(plane.data(), BytesOf(pixels), &width, &height);
        VTGF_Convert565toRGBA(BytesOf(wide), plane.data(), &width, &height);
        VTGF_AlphaSimpleBufPalAlpha_Copy_32(BytesOf(expanded), indexes.data(), BytesOf(palette), &width,
                                            &height);
        wb::PackPremultipliedRun(premultiplied.data(), BytesOf(pixels), pixels.size());
        for (int i = 0; i < count; i++) {
            const auto at = [&](Pixels &picture) { return At(picture, width, height, i % width, i / width); };
            const auto place = std::size_t(i);
            const std::uint16_t packed = wb::Load16(&plane[place * 2]);
            ASSERT_EQ(turned[place], at(pixels)) << width << ' ' << i;
            ASSERT_EQ(packed, wb::PackPixel(at(pixels))) << width << ' ' << i;
            ASSERT_EQ(at(wide), wb::Widen565(packed)) << width << ' ' << i;
            const std::uint8_t *entry = BytesOf(palette) + indexes[place] * 4;
            ASSERT_EQ(at(expanded), wb::PixelOf(entry[0], entry[1], entry[2], entry[3]));
            ASSERT_EQ(wb::Load16(&premultiplied[place * 2]), wb::PackPremultipliedPixel(pixels[place]));
        }
    }
}

TEST(Buffers, ConvertsEveryValue)
{
    const std::int32_t side = 256;
    Pixels pixels(65536);
    Bytes plane(65536 * 2), back(65536 * 2);
    for (unsigned i = 0; i < 65536; i++) {
        wb::Store16(&plane[i * 2], static_cast<std::uint16_t>(i));
        pixels[i] = (i & 255) << 24 | (i >> 8) * 0x010101; // every colour with every alpha
    }
    wb::PackPremultipliedRun(back.data(), BytesOf(pixels), 65536);
    for (unsigned i = 0; i < 65536; i++)
        ASSERT_EQ(wb::Load16(&back[i * 2]), wb::PackPremultipliedPixel(pixels[i])) << i;
    VTGF_Convert565toRGBA(BytesOf(pixels), plane.data(), &side, &side);
    VTGF_ConvertRGBAto565(back.data(), BytesOf(pixels), &side, &side);
    EXPECT_EQ(back, plane);
}

TEST(Buffers, TellsFramesApart)
{
    // unchanged, changed, both invisible with other colours, appeared, vanished
    Pixels before = {0x80112233, 0x80112233, 0x00111111, 0x00000000, 0x55443322};
    Pixels now = {0x80112233, 0x80112234, 0x00222222, 0x01020304, 0x00443322};
    Pixels target(5, 9);
    const std::int32_t five = 5, one = 1;
    VTGF_AnimFrame_Build_32(BytesOf(target), BytesOf(before), BytesOf(now), &five, &one);
    EXPECT_EQ(target, (Pixels{0, 0x80112234, 0, 0x01020304, 0x00443322}));
}

} // namespace
