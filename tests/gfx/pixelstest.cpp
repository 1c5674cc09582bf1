#include "gfx/pixels.h"

#include "gfx/graphicslibrary.h"

#include <gmock/gmock.h>

#include <cmath>
#include <numeric>

namespace wb
{
namespace
{

FrameBuf MakeFrame(std::int32_t width, std::int32_t height)
{
    FrameBuf frame;
    frame.Width = width;
    frame.Height = height;
    frame.Pixels.resize(std::size_t(width * height * 4));
    std::iota(frame.Pixels.begin(), frame.Pixels.end(), std::uint8_t(3));
    return frame;
}

TEST(Pixels, Packs565)
{
    EXPECT_EQ(Pack565(255, 255, 255), 0xFFFF);
    EXPECT_EQ(Pack565(7, 3, 7), 0);
    EXPECT_EQ(Pack565(8, 4, 8), 0x0821);
    EXPECT_EQ(Pack565(100, 0, 0), 0x6000);
    for (unsigned value = 0; value < 65536; value++) {
        const std::uint32_t wide = Widen565(static_cast<std::uint16_t>(value));
        ASSERT_EQ(Pack565(wide >> 16 & 255, wide >> 8 & 255, wide & 255), value);
        ASSERT_EQ(wide >> 24, 255U);
    }
}

// The blend as a calculation in double precision, halves to the even neighbour.
TEST(Pixels, BlendsExactly)
{
    static_assert(BlendOver(0, 200, 128) == 100 && BlendOver(0, 255, 1) == 1);
    for (int base : {0, 1, 77, 128, 254, 255})
        for (int c = 0; c < 256; c++)
            for (int a = 0; a < 256; a++) {
                const double sum = (255 - a) * double(base) / 255 + double(c) * a / 255;
                const int expected = a == 0 ? base : a == 255 ? c : int(std::nearbyint(sum));
                ASSERT_EQ(BlendOver(base, c, a), expected) << base << ' ' << c << ' ' << a;
            }
}

TEST(Pixels, TransparencyBytesSpreadOverAllAlphas)
{
    EXPECT_EQ(InvAlpha6(255), 0);
    EXPECT_EQ(InvAlpha6(0), 63);
    EXPECT_EQ(InvAlpha6(128), 31);
    EXPECT_EQ(AlphaOfTransparency(0), 255);
    EXPECT_EQ(AlphaOfTransparency(31), 130);
    for (int t = 0; t < 256; t++)
        EXPECT_EQ(InvAlpha6(AlphaOfTransparency(t)), std::min(t, 63)) << t;
}

TEST(Pixels, FlipsRows)
{
    for (std::int32_t height : {1, 2, 3, 8}) {
        const FrameBuf before = MakeFrame(5, height);
        FrameBuf frame = before;
        FlipRows(frame);
        for (std::int32_t y = 0; y < height; y++) {
            const auto row = before.Pixels.begin() + (height - 1 - y) * 20;
            EXPECT_TRUE(std::equal(row, row + 20, frame.Pixels.begin() + y * 20)) << height << ' ' << y;
        }
        FlipRows(frame);
        EXPECT_EQ(frame.Pixels, before.Pixels);
    }
    FrameBuf empty;
    FlipRows(empty);
    EXPECT_TRUE(empty.Pixels.empty());
}

TEST(Pixels, HandlesHoldCopies)
{
    FrameBuf frame = MakeFrame(4, 3);
    frame.X = 9;
    const std::int32_t handle = FrameBufToDib(frame);
    ASSERT_GT(handle, 0);
    const ByteArray pixels = frame.Pixels;
    frame.Pixels.assign(frame.Pixels.size(), 0);
    const FrameBuf back = DibToFrameBuf(handle);
    Graphics().VTGF_DIB_Free(handle);
    EXPECT_EQ(back.Pixels, pixels);
    EXPECT_THAT((std::array{back.X, back.Width, back.Height}), testing::ElementsAre(0, 4, 3));

    EXPECT_EQ(FrameBufToDib({}), 0);
    EXPECT_EQ(DibToFrameBuf(0).Width, 0);
    EXPECT_EQ(DibToFrameBuf(handle).Width, 0) << "a freed handle is no picture";
}

TEST(Pixels, SizesAreBounded)
{
    EXPECT_EQ(PictureBytes(16384, 16384), MaxPicturePixels * 4);
    EXPECT_EQ(PictureBytes(16384, 16385), 0);
    EXPECT_EQ(PictureBytes(-2, -2), 0);
    EXPECT_EQ(PictureBytes(std::int64_t(1) << 32, std::int64_t(1) << 32), 0);
}

} // namespace
} // namespace wb
