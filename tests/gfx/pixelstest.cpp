#include "gfx/pixels.h"

#include "gfx/graphicslibrary.h"
#include "rastgl/rows565.h"
#include "support/samplefolder.h"

#include <gmock/gmock.h>

#include <cmath>

namespace wb
{
namespace
{

using testing::ElementsAre;

TEST(Pixels, Packs565)
{
    EXPECT_THAT((std::array{Pack565(255, 255, 255), Pack565(7, 3, 7), Pack565(8, 4, 8), Pack565(100, 0, 0)}),
                ElementsAre(0xFFFF, 0, 0x0821, 0x6000));
    for (unsigned value = 0; value < 65536; value++) {
        const std::uint32_t wide = Widen565(static_cast<std::uint16_t>(value));
        ASSERT_EQ(PackPixel(wide), value);
        ASSERT_EQ(wide >> 24, 255U);
    }
}

// The blend as a calculation in double precision, halves to the even neighbour.
TEST(Pixels, BlendsExactly)
{
    for (int base : {0, 1, 77, 128, 254, 255})
        for (int c = 0; c < 256; c++)
            for (int a = 0; a < 256; a++) {
                const double sum = (255 - a) * double(base) / 255 + double(c) * a / 255;
                ASSERT_EQ(BlendOver(base, c, a), int(std::nearbyint(sum))) << base << ' ' << c << ' ' << a;
            }
}

TEST(Pixels, TransparencyBytesSpreadOverAllAlphas)
{
    EXPECT_THAT((std::array{InvAlpha6(255), InvAlpha6(128), InvAlpha6(0)}), ElementsAre(0, 31, 63));
    EXPECT_THAT((std::array{AlphaOfTransparency(0), AlphaOfTransparency(31)}), ElementsAre(255, 130));
    for (int t = 0; t < 256; t++)
        EXPECT_EQ(InvAlpha6(AlphaOfTransparency(t)), std::min(t, 63)) << t;
}

TEST(Pixels, FlipsRows)
{
    for (const int height : {0, 1, 2, 3, 8}) {
        const auto fromBelow = [=](int x, int y) { return std::uint32_t((height - 1 - y) * 5 + x); };
        FrameBuf frame = MakePicture(5, height, [](int x, int y) { return std::uint32_t(y * 5 + x); });
        FlipRows(frame);
        EXPECT_EQ(frame.Pixels, MakePicture(5, height, fromBelow).Pixels) << height;
    }
}

TEST(Pixels, HandlesHoldCopies)
{
    FrameBuf frame = MakePicture(4, 3, [](int x, int y) { return std::uint32_t(y * 4 + x); });
    frame.X = 9;
    const ByteArray pixels = frame.Pixels;
    const std::int32_t handle = FrameBufToDib(frame);
    frame.Pixels.assign(frame.Pixels.size(), 0);
    const FrameBuf back = DibToFrameBuf(handle);
    Graphics().VTGF_DIB_Free(handle);
    EXPECT_EQ(back.Pixels, pixels);
    EXPECT_THAT((std::array{back.X, back.Width, back.Height}), ElementsAre(0, 4, 3));

    EXPECT_EQ(FrameBufToDib({}), 0);
    for (const std::int32_t gone : {0, handle})
        EXPECT_EQ(DibToFrameBuf(gone).Width, 0) << gone;
}

TEST(Pixels, SizesAreBounded)
{
    EXPECT_THAT((std::array{PictureBytes(16384, 16384), PictureBytes(16384, 16385), PictureBytes(-2, -2),
                            PictureBytes(std::int64_t(1) << 32, std::int64_t(1) << 32)}),
                ElementsAre(MaxPicturePixels * 4, 0, 0, 0));
}

} // namespace
} // namespace wb
