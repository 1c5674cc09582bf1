#include "rastgl/rastgl.h"
#include "rastgl/rows565.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace
{

using Bytes = std::vector<std::uint8_t>;

Bytes RandomBytes(std::size_t count, unsigned seed)
{
    std::mt19937 random(seed);
    Bytes bytes(count);
    for (std::uint8_t &byte : bytes)
        byte = random() & 255;
    return bytes;
}

// Pixels of which about every fourth is visible.
Bytes SparsePixels(int width, int height, unsigned seed)
{
    Bytes pixels = RandomBytes(std::size_t(width * height * 4), seed);
    for (std::size_t i = 3; i < pixels.size(); i += 4)
        pixels[i] = pixels[i] % 4 == 0 ? pixels[i] : 0;
    return pixels;
}

std::uint8_t *At(Bytes &pixels, int width, int height, int x, int y)
{
    return pixels.data() + std::size_t((height - 1 - y) * width + x) * 4;
}

TEST(Buffers, SplitsIntoLayers)
{
    Bytes source(256 * 4, 9);
    for (int a = 0; a < 256; a++)
        source[std::size_t(a) * 4 + 3] = static_cast<std::uint8_t>(a);
    const std::int32_t size = 1024;
    const std::int32_t most = 1000; // the smaller count limits what is written
    const auto split = [&](auto copy) {
        Bytes target(1024, 77);
        copy(target.data(), &size, source.data(), &most);
        EXPECT_EQ(target[1000], 77);
        return target;
    };
    const Bytes opaque = split(VTGF_TransBuf_Copy_32);
    const Bytes colours = split(VTGF_TransAlphaBuf_Copy_32);
    EXPECT_EQ(split(VTGF_AlphaBuf_Copy_32), colours);
    for (int a = 0; a < 250; a++) {
        EXPECT_EQ(wb::Load32(&opaque[std::size_t(a) * 4]), 0U) << a;
        EXPECT_EQ(wb::Load32(&colours[std::size_t(a) * 4]),
                  a == 0 ? 0 : wb::Load32(&source[std::size_t(a) * 4]));
    }
    Bytes last(4, 1);
    const std::int32_t four = 4;
    VTGF_TransBuf_Copy_32(last.data(), &four, &source[1020], &four);
    EXPECT_EQ(wb::Load32(last.data()), 0xFF090909U);
}

TEST(Buffers, CopiesTheCommonPart)
{
    std::mt19937 random(5);
    const auto within = [&random](int low, int high) {
        return low + int(random() % unsigned(high - low + 1));
    };
    for (int round = 0; round < 400; round++) {
        const bool flip = round % 2 == 1;
        const std::int32_t tw = within(1, 9), th = within(1, 9), sw = within(1, 9), sh = within(1, 9);
        const std::int32_t tx = within(-10, 10), ty = within(-10, 10), sx = within(-10, 10),
                           sy = within(-10, 10);
        Bytes source = RandomBytes(std::size_t(sw * sh * 4), unsigned(round));
        Bytes target = RandomBytes(std::size_t(tw * th * 4), unsigned(round) + 1000);
        Bytes expected = target;
        for (int y = 0; y < th; y++)
            for (int x = 0; x < tw; x++) {
                const int fromX = sx + x - tx, fromY = sy + y - ty;
                if (x < tx || y < ty || fromX < sx || fromY < sy || fromX < 0 || fromY < 0 || fromX >= sw ||
                    fromY >= sh)
                    continue;
                std::memcpy(At(expected, tw, th, x, y),
                            At(source, sw, sh, fromX, flip ? sh - 1 - fromY : fromY), 4);
            }
        (flip ? VTGF_CopyClip_Flip_32 : VTGF_CopyClip_32)(target.data(), &tx, &ty, &tw, &th, source.data(),
                                                          &sx, &sy, &sw, &sh);
        ASSERT_EQ(target, expected) << round;
    }
    const std::int32_t far = INT32_MIN, one = 1, none = 0;
    Bytes pixel(4, 1);
    VTGF_CopyClip_32(pixel.data(), &far, &far, &one, &one, pixel.data(), &far, &none, &one, &one);
    VTGF_CopyClip_32(pixel.data(), &none, &none, &none, &one, nullptr, &none, &none, &far, &far);
    EXPECT_EQ(pixel, Bytes(4, 1));
}

TEST(Buffers, FindsBounds)
{
    for (int round = 0; round < 200; round++) {
        const std::int32_t width = 1 + round % 90, height = 1 + round % 7;
        Bytes pixels = SparsePixels(width, height, unsigned(round));
        if (round % 3 == 0) // mostly nothing, so that bounds are narrow
            for (std::size_t i = 3; i < pixels.size(); i += 4)
                pixels[i] = pixels[i] > 250 ? pixels[i] : 0;
        std::array<int, 4> expected = {width, height, 0, 0};
        for (int y = 0; y < height; y++)
            for (int x = 0; x < width; x++)
                if (At(pixels, width, height, x, y)[3] != 0)
                    expected = {std::min(expected[0], x), std::min(expected[1], y),
                                std::max(expected[2], x + 1), std::max(expected[3], y + 1)};
        if (expected[2] == 0)
            expected = {};
        const std::array<int, 4> found = {VTGF_GetStartX_32(pixels.data(), &width, &height),
                                          VTGF_GetStartY_32(pixels.data(), &width, &height),
                                          VTGF_GetFinishX_32(pixels.data(), &width, &height),
                                          VTGF_GetFinishY_32(pixels.data(), &width, &height)};
        ASSERT_EQ(found, expected) << round;
    }
}

// Every width around the blocks that the wide instructions take, against single pixels.
TEST(Buffers, ConvertsPlanes)
{
    const std::int32_t height = 2;
    for (std::int32_t width = 0; width < 200; width++) {
        const auto pixelCount = std::size_t(width * height);
        Bytes pixels = RandomBytes(pixelCount * 4, unsigned(width));
        const Bytes palette = RandomBytes(1024, 3);
        const Bytes indexes = RandomBytes(pixelCount, 4);
        Bytes plane(pixelCount * 2), premultiplied(pixelCount * 2), wide(pixelCount * 4),
            expanded(pixelCount * 4);
        VTGF_ConvertRGBAto565(plane.data(), pixels.data(), &width, &height);
        VTGF_Convert565toRGBA(wide.data(), plane.data(), &width, &height);
        VTGF_AlphaSimpleBufPalAlpha_Copy_32(expanded.data(), indexes.data(), palette.data(), &width, &height);
        wb::PackPremultipliedRun(premultiplied.data(), pixels.data(), pixelCount);
        for (std::size_t i = 0; i < pixelCount; i++) {
            const int x = int(i) % width, y = int(i) / width;
            const std::uint32_t pixel = wb::Load32(At(pixels, width, height, x, y));
            const std::uint16_t packed = wb::Load16(&plane[i * 2]);
            ASSERT_EQ(packed, wb::PackPixel(pixel)) << width << ' ' << i;
            ASSERT_EQ(wb::Load32(At(wide, width, height, x, y)), wb::Widen565(packed)) << width << ' ' << i;
            const std::uint8_t *entry = &palette[std::size_t(indexes[i]) * 4];
            ASSERT_EQ(wb::Load32(At(expanded, width, height, x, y)),
                      wb::PixelOf(entry[0], entry[1], entry[2], entry[3]));
            ASSERT_EQ(wb::Load16(&premultiplied[i * 2]),
                      wb::PackPremultipliedPixel(wb::Load32(&pixels[i * 4])));
        }
    }
}

TEST(Buffers, ConvertsEveryValue)
{
    const std::int32_t side = 256;
    Bytes pixels(65536 * 4), plane(65536 * 2), back(65536 * 2);
    for (unsigned i = 0; i < 65536; i++) {
        wb::Store16(&plane[i * 2], static_cast<std::uint16_t>(i));
        wb::Store32(&pixels[i * 4], (i & 255) << 24 | (i >> 8) * 0x010101); // every colour with every alpha
    }
    wb::PackPremultipliedRun(back.data(), pixels.data(), 65536);
    for (unsigned i = 0; i < 65536; i++)
        ASSERT_EQ(wb::Load16(&back[i * 2]), wb::PackPremultipliedPixel(wb::Load32(&pixels[i * 4]))) << i;
    VTGF_Convert565toRGBA(pixels.data(), plane.data(), &side, &side);
    VTGF_ConvertRGBAto565(back.data(), pixels.data(), &side, &side);
    EXPECT_EQ(back, plane);
}

TEST(Buffers, FlipsAndCompares)
{
    const std::int32_t width = 3, height = 5;
    Bytes source = RandomBytes(60, 1), flipped(60), twice(60);
    VTGF_VFlipBuf_Copy_32(flipped.data(), source.data(), &width, &height);
    VTGF_VFlipBuf_Copy_32(twice.data(), flipped.data(), &width, &height);
    EXPECT_EQ(wb::Load32(At(flipped, width, height, 1, 0)), wb::Load32(At(source, width, height, 1, 4)));
    EXPECT_EQ(twice, source);

    // unchanged, changed, both invisible with other colours, appeared, vanished
    const std::int32_t five = 5, one = 1;
    const std::array<std::uint32_t, 5> before = {0x80112233, 0x80112233, 0x00111111, 0x00000000, 0x55443322};
    const std::array<std::uint32_t, 5> now = {0x80112233, 0x80112234, 0x00222222, 0x01020304, 0x00443322};
    const std::array<std::uint32_t, 5> expected = {0, 0x80112234, 0, 0x01020304, 0x00443322};
    Bytes previous(20), current(20), target(20, 9);
    std::memcpy(previous.data(), before.data(), 20);
    std::memcpy(current.data(), now.data(), 20);
    VTGF_AnimFrame_Build_32(target.data(), previous.data(), current.data(), &five, &one);
    EXPECT_EQ(std::memcmp(target.data(), expected.data(), 20), 0);
}

} // namespace
