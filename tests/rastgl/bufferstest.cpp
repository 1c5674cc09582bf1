#include "rastgl/canvas.h"
#include "rastgl/rastgl.h"
#include "rastgl/rows565.h"

#include <gtest/gtest.h>

#include <array>

namespace
{

using Bytes = std::vector<std::uint8_t>;

TEST(Buffers, SplitsIntoLayers)
{
    const Canvas source = Paint(256, 1, [](int x, int) { return unsigned(x) << 24 | 0x090909; });
    Canvas opaque = Flat(256, 1), partly = source;
    partly.At(0, 0) = partly.At(255, 0) = 0;
    opaque.At(255, 0) = 0xFF090909;
    const auto split = [&source](auto copy) {
        const std::int32_t all = 1024, most = 1000; // the smaller count limits what is written
        Canvas target = Flat(256, 1, 77);
        copy(target.Bytes(), &all, source.Bytes(), &most);
        copy(target.Bytes(), &most, source.Bytes(), &all);
        EXPECT_EQ(target.At(250, 0), 77U);
        copy(target.Bytes(), &all, source.Bytes(), &all);
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
        Canvas source = Noise(within(1, 9), within(1, 9), round);
        Canvas target = Noise(within(1, 9), within(1, 9), round + 1000);
        Canvas expected = target;
        const std::int32_t tx = within(-10, 10), ty = within(-10, 10);
        const std::int32_t sx = within(-10, 10), sy = within(-10, 10);
        for (int y = std::max(ty, 0); y < target.height; y++)
            for (int x = std::max(tx, 0); x < target.width; x++) {
                const int fromX = sx + x - tx, fromY = sy + y - ty;
                if (fromX >= 0 && fromY >= 0 && fromX < source.width && fromY < source.height)
                    expected.At(x, y) = source.At(fromX, flip ? source.height - 1 - fromY : fromY);
            }
        (flip ? VTGF_CopyClip_Flip_32 : VTGF_CopyClip_32)(target.Bytes(), &tx, &ty, &target.width,
                                                          &target.height, source.Bytes(), &sx, &sy,
                                                          &source.width, &source.height);
        ASSERT_EQ(target, expected) << round;
    }
    const std::int32_t far = INT32_MIN, one = 1, none = 0;
    Canvas pixel = Flat(1, 1, 7);
    VTGF_CopyClip_32(pixel.Bytes(), &far, &far, &one, &one, pixel.Bytes(), &far, &none, &one, &one);
    VTGF_CopyClip_32(pixel.Bytes(), &none, &none, &none, &one, nullptr, &none, &none, &far, &far);
    EXPECT_EQ(pixel, Flat(1, 1, 7));
}

TEST(Buffers, FindsBounds)
{
    for (unsigned round = 0; round < 200; round++) {
        Canvas picture = Noise(1 + int(round) % 90, 1 + int(round) % 7, round);
        const auto &[width, height, colours] = picture;
        std::array<int, 4> expected = {width, height, 0, 0};
        for (int at = 0; at < width * height; at++) {
            const int x = at % width, y = at / width;
            // Every third round mostly nothing, so that bounds are narrow.
            if (picture.At(x, y) >> 24 < (round % 3 == 0 ? 250 : 190))
                picture.At(x, y) &= 0xFFFFFF;
            else
                expected = {std::min(expected[0], x), std::min(expected[1], y), std::max(expected[2], x + 1),
                            std::max(expected[3], y + 1)};
        }
        if (expected[2] == 0)
            expected = {};
        const auto find = [&](auto edge) { return edge(picture.Bytes(), &picture.width, &picture.height); };
        const std::array<int, 4> found = {find(VTGF_GetStartX_32), find(VTGF_GetStartY_32),
                                          find(VTGF_GetFinishX_32), find(VTGF_GetFinishY_32)};
        ASSERT_EQ(found, expected) << round;
    }
}

// Every width around the blocks that the wide instructions take, against single pixels; in all, every colour
// of a channel with every alpha, and every 5-6-5 value.
TEST(Buffers, ConvertsAndTurnsPlanes)
{
    const Canvas palette = Noise(256, 1, 3);
    const std::int32_t height = 4;
    unsigned count = 0;
    for (std::int32_t width = 0; width < 200; width++) {
        Bytes stored(std::size_t(width * height) * 2);
        const Canvas pixels = Paint(width, height, [&](int x, int y) {
            const unsigned mixed = count++ * 40503;
            wb::Store16(&stored[std::size_t(y * width + x) * 2], static_cast<std::uint16_t>(mixed));
            return (mixed & 255) << 24 | ((mixed >> 8 & 255) * 0x010101 ^ 0x0055AA);
        });
        Canvas turned = pixels, wide = pixels, expanded = pixels;
        Bytes plane(stored.size()), premultiplied(stored.size());
        const Bytes indexes(pixels.Bytes(), pixels.Bytes() + width * height);
        VTGF_VFlipBuf_Copy_32(turned.Bytes(), pixels.Bytes(), &width, &height);
        VTGF_ConvertRGBAto565(plane.data(), pixels.Bytes(), &width, &height);
        VTGF_Convert565toRGBA(wide.Bytes(), stored.data(), &width, &height);
        VTGF_AlphaSimpleBufPalAlpha_Copy_32(expanded.Bytes(), indexes.data(), palette.Bytes(), &width,
                                            &height);
        wb::PackPremultipliedRun(premultiplied.data(), turned.Bytes(), turned.colours.size());
        for (std::size_t i = 0; i < indexes.size(); i++) { // from the top, as planes lie
            const int x = int(i) % width, y = int(i) / width;
            const std::uint32_t pixel = pixels.At(x, y);
            ASSERT_EQ(turned.colours[i], pixel) << width << ' ' << i;
            ASSERT_EQ(wb::Load16(&plane[i * 2]), wb::PackPixel(pixel)) << width << ' ' << i;
            ASSERT_EQ(wb::Load16(&premultiplied[i * 2]), wb::PackPremultipliedPixel(pixel));
            ASSERT_EQ(wide.At(x, y), wb::Widen565(wb::Load16(&stored[i * 2]))) << width << ' ' << i;
            const std::uint8_t *entry = palette.Bytes() + indexes[i] * 4;
            ASSERT_EQ(expanded.At(x, y), wb::PixelOf(entry[0], entry[1], entry[2], entry[3]));
        }
    }
    ASSERT_GE(count, 65536U);
}

TEST(Buffers, TellsFramesApart)
{
    // unchanged, changed, both invisible with other colours, appeared, vanished
    const Canvas before{5, 1, {0x80112233, 0x80112233, 0x00111111, 0x00000000, 0x55443322}};
    const Canvas now{5, 1, {0x80112233, 0x80112234, 0x00222222, 0x01020304, 0x00443322}};
    Canvas target = Flat(5, 1, 9);
    // The second and the last would go on showing what was there.
    EXPECT_EQ(VTGF_AnimFrame_Build_32(target.Bytes(), before.Bytes(), now.Bytes(), &now.width, &now.height),
              2);
    EXPECT_EQ(target, (Canvas{5, 1, {0, 0x80112234, 0, 0x01020304, 0x00443322}}));
}

} // namespace
