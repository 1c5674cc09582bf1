#include "gi/giencoder.h"

#include "common/bytes.h"
#include "gfx/pixels.h"
#include "madegi.h"
#include "plainencoder.h"

#include <gmock/gmock.h>

namespace wb::test
{
namespace
{

using testing::ElementsAre;

ByteArray Encode(const FrameBuf &picture, std::int32_t type, std::int32_t transClass, bool crop)
{
    ByteArray gi = {1, 2, 3}; // must not matter
    const std::int32_t length = EncodeGi(gi, picture, type, transClass, crop);
    EXPECT_EQ(length, ByteCount(gi));
    return gi;
}

TEST(GiEncoder, WritesWhatThePlainStepsGive)
{
    std::mt19937 random(21);
    ByteArray kept;
    for (int round = 0; round < 60; round++) {
        const std::int32_t width = 1 + std::int32_t(random() % (round % 4 == 0 ? 700 : 70));
        const std::int32_t height = 1 + std::int32_t(random() % 12);
        for (std::int32_t transClass = 0; transClass <= 2; transClass++) {
            // A picture may be said to have less transparency than it has.
            const FrameBuf picture = RandomPicture(random, width, height, round % 5 == 0 ? 2 : transClass);
            for (std::int32_t type = 0; type <= (transClass == 0 ? 0 : 4); type++)
                for (const bool crop : {false, true}) {
                    ASSERT_GT(EncodeGi(kept, picture, type, transClass, crop), 0);
                    ASSERT_EQ(kept, EncodePlainly(picture, type, transClass, crop))
                        << round << ": " << width << " x " << height << " type " << type << " class "
                        << transClass;
                }
        }
    }
}

// Pixels of alpha 0 with a colour belong to no layer but are part of a 32-bit plane.
TEST(GiEncoder, HoldsEveryAlphaAndInvisibleColours)
{
    std::mt19937 random(22);
    FrameBuf picture = MakeCanvas({0, 0, 300, 3});
    for (std::int32_t i = 0; i < 900; i++)
        SetPixel(picture, i % 300, i / 300, (random() & 0xFFFFFF) | std::uint32_t(i % 256) << 24);
    for (std::int32_t type = 0; type <= 2; type++)
        EXPECT_EQ(Encode(picture, type, 2, true), EncodePlainly(picture, type, 2, true)) << type;
}

TEST(GiEncoder, CodesRows)
{
    struct Case {
        std::vector<std::pair<int, bool>> runs; // pixels, visible
        std::vector<int> coded;                 // -n: n visible pixels
    };
    const std::vector<Case> cases = {
        {{{130, false}, {2, true}}, {0x7F, 0x03, 0x82, -2, 0}},
        {{{128, true}}, {0xFF, -127, 0x81, -1, 0}},
        {{{300, true}}, {0xFF, -127, 0xFF, -127, 0xAE, -46, 0}},
        {{{127, false}, {1, true}, {127, false}}, {0x7F, 0x81, -1, 0x7F, 0}},
        {{{64, true}, {64, false}, {64, true}}, {0xC0, -64, 0x40, 0xC0, -64, 0}},
        {{{9, false}}, {0x80}},
    };
    for (const Case &one : cases) {
        int width = 0;
        for (const auto &[pixels, visible] : one.runs)
            width += pixels;
        FrameBuf picture = MakeCanvas({0, 0, width, 1});
        int x = 0;
        for (const auto &[pixels, visible] : one.runs)
            for (int end = x + pixels; x < end; x++)
                SetPixel(picture, x, 0, visible ? 0xFFFFFFFF : 0);
        ByteArray rows;
        for (const int byte : one.coded)
            rows.insert(rows.end(), std::size_t(byte < 0 ? -byte * 2 : 1),
                        byte < 0 ? 0xFF : std::uint8_t(byte));
        const ByteArray gi = Encode(picture, 1, 1, false);
        EXPECT_EQ(ByteArray(gi.begin() + 96, gi.end()), MakeRunLayer(std::uint32_t(width), 1, rows)) << width;
    }
}

TEST(GiEncoder, LaysOutFiles)
{
    FrameBuf dot = MakeCanvas({7, -3, 8, -2});
    SetPixel(dot, 0, 0, 0xFFC80000);
    ByteArray gi = Encode(dot, 1, 1, false);
    ASSERT_EQ(gi.size(), 116U);
    std::vector<std::int32_t> fields;
    for (std::int32_t position = 0; position < 112; position += 4)
        fields.push_back(GetLong(gi, position));
    EXPECT_THAT(fields, ElementsAre(0x6967, 1, 7, -3, 8, -2, 0xF800, 0x07E0, 0x1F, 0, 1, 1, 0, 0, 0, 0, 96,
                                    20, 7, -3, 8, -2, 0, 0, 4, 1, 1, 0));
    EXPECT_THAT(ByteArray(gi.begin() + 112, gi.end()), ElementsAre(0x81, 0x00, 0xC0, 0));

    // A partly transparent pixel: premultiplied colour, transparency byte.
    SetPixel(dot, 0, 0, 0x80C80000);
    gi = Encode(dot, 2, 2, true);
    EXPECT_EQ(GetLong(gi, 64), 0) << "nothing is opaque";
    EXPECT_THAT(ByteArray(gi.begin() + GetLong(gi, 96) + 16, gi.begin() + GetLong(gi, 128)),
                ElementsAre(0x81, 0x00, 0x60, 0));
    EXPECT_THAT(ByteArray(gi.end() - 3, gi.end()), ElementsAre(0x81, 31, 0));

    gi = Encode(MakeCanvas({0, 0, 5, 5}), 1, 1, true);
    EXPECT_EQ(gi.size(), 96U);
    EXPECT_THAT(ByteArray(gi.begin() + 64, gi.end()), testing::Each(0)) << "a layer that is cropped away";
    gi = Encode(MakeCanvas({0, 0, 10, 10}), 4, 1, true);
    EXPECT_EQ(gi.size(), 1252U);
    EXPECT_EQ(GetLong(gi, 96), 228);
    EXPECT_EQ(GetLong(gi, 100), 1024);
}

TEST(GiEncoder, RefusesAndYields)
{
    const FrameBuf picture = MakeCanvas({0, 0, 2, 2});
    FrameBuf untrue = picture;
    untrue.Width = 3; // its pixels are fewer
    struct Case {
        FrameBuf picture;
        std::int32_t type, transClass;
    };
    const std::vector<Case> refused = {{{}, 1, 1},      {untrue, 0, 1},   {picture, 5, 2},
                                       {picture, 6, 2}, {picture, -1, 1}, {picture, 1, 0},
                                       {picture, 4, 0}, {picture, 0, 3},  {picture, 0, -1}};
    for (const Case &one : refused) {
        ByteArray out = {1, 2, 3};
        EXPECT_EQ(EncodeGi(out, one.picture, one.type, one.transClass, false), 0)
            << one.type << one.transClass;
        EXPECT_THAT(out, ElementsAre(1, 2, 3));
    }
    const std::array<std::int32_t, 7> layers = {1, 1, 3, 2, 2, 1, 1};
    for (std::int32_t type = 0; type <= 6; type++)
        EXPECT_EQ(GiLayerCount(type), layers[std::size_t(type)]);
    EXPECT_EQ(GiLayerCount(-1) + GiLayerCount(7), 0);
    int yields = 0;
    ByteArray out;
    EncodeGi(out, picture, 2, 2, false, [&yields] { yields++; });
    EXPECT_EQ(yields, 3);
}

TEST(GiEncoder, CropsToContent)
{
    FrameBuf picture = MakeCanvas({10, 20, 18, 25});
    picture.Kind = "GI";
    SetPixel(picture, 2, 1, 0x01AABBCC);
    SetPixel(picture, 5, 3, 0xFF000000);
    SetPixel(picture, 7, 4, 0x00FFFFFF); // invisible
    const FrameBuf cropped = CropToContent(picture);
    EXPECT_THAT((std::array{cropped.X, cropped.Y, cropped.Width, cropped.Height}), ElementsAre(12, 21, 4, 3));
    EXPECT_EQ(PixelAt(cropped, 0, 0), 0x01AABBCCU);
    EXPECT_EQ(PixelAt(cropped, 3, 2), 0xFF000000U);
    EXPECT_EQ(cropped.Kind, "");
    for (const FrameBuf &none : {CropToContent(MakeCanvas({3, 3, 9, 9})), CropToContent({})})
        EXPECT_TRUE(none.X == 0 && none.Width == 0 && none.Pixels.empty());
}

} // namespace
} // namespace wb::test
