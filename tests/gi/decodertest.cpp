#include "gi/gidecoder.h"

#include "common/bytes.h"
#include "gfx/pixels.h"
#include "gi/giencoder.h"
#include "madegi.h"
#include "rastgl/rows565.h"

#include <gmock/gmock.h>

namespace wb::test
{
namespace
{

using testing::Each;
using testing::ElementsAre;

std::array<std::int32_t, 4> PlaceOf(const FrameBuf &picture)
{
    return {picture.X, picture.Y, picture.Width, picture.Height};
}

// A 32-bit plane of pixels 0x01010101 * (first, first + 1, ...), top row first.
ByteArray MakePlane(int pixels, int first = 1)
{
    ByteArray plane;
    for (int i = 0; i < pixels; i++)
        plane.insert(plane.end(), 4, std::uint8_t(first + i));
    return plane;
}

TEST(GiDecoder, ReadsPlanesTopRowFirst)
{
    const FrameBuf wide = Decode(MakeGi(0, Masks8888, {5, 6, 8, 8}, {{{5, 6, 8, 8}, MakePlane(6)}}));
    EXPECT_THAT(PlaceOf(wide), ElementsAre(5, 6, 3, 2));
    EXPECT_EQ(wide.Kind, "GI");
    EXPECT_EQ(Load32(wide.Pixels.data()), 0x04040404U) << "the bottom row comes first in memory";
    EXPECT_EQ(PixelAt(wide, 2, 0), 0x03030303U);

    const FrameBuf narrow =
        Decode(MakeGi(0, Masks565, {0, 0, 1, 2}, {{{0, 0, 1, 2}, {0x00, 0xF8, 0x1F, 0x00}}}));
    EXPECT_EQ(PixelAt(narrow, 0, 0), 0xFFFF0000U);
    EXPECT_EQ(PixelAt(narrow, 0, 1), 0xFF0000FFU);

    ByteArray palette(1024, 0);
    for (int i = 0; i < 4; i++)
        palette[std::size_t(9 * 4 + i)] = std::uint8_t(0x10 * (i + 1));
    const FrameBuf indexed =
        Decode(MakeGi(4, Masks565, {3, 3, 5, 4}, {{{3, 3, 5, 4}, {9, 0}}, {{}, palette}}));
    EXPECT_THAT(PlaceOf(indexed), ElementsAre(0, 0, 2, 1)) << "type 4 leaves the place as it is";
    EXPECT_EQ(PixelAt(indexed, 0, 0), 0x40102030U);
}

TEST(GiDecoder, SizesAndSkips)
{
    const ByteArray run = MakeRunLayer(1, 1, {0x81, 0xFF, 0xFF, 0});
    const GiRect box = {1, 2, 4, 6};
    struct Case {
        const char *name;
        ByteArray gi;
        std::array<std::int32_t, 4> place;
    };
    const std::vector<Case> blank = {
        {"no layer 0", MakeGi(1, Masks565, box, {{{}, {}}}), {1, 2, 3, 4}},
        {"no layers", MakeGi(2, Masks565, box, {}), {1, 2, 3, 4}},
        {"unknown masks", MakeGi(0, {1, 2, 3, 4}, box, {{box, MakePlane(12)}}), {1, 2, 3, 4}},
        {"plane without a whole row", MakeGi(0, Masks8888, box, {{box, MakePlane(2)}}), {1, 2, 3, 4}},
        {"plane left of the canvas",
         MakeGi(0, Masks8888, box, {{{0, 2, 4, 6}, MakePlane(16)}}),
         {1, 2, 3, 4}},
        {"layer too short for its palette", MakeGi(3, Masks565, box, {{box, run}, {box, run}}), {1, 2, 3, 4}},
        {"type 5 has its layer's size", MakeGi(5, Masks565, box, {{{7, 7, 9, 8}, run}}), {7, 7, 2, 1}},
        {"type 6 has the header's", MakeGi(6, Masks565, box, {{{7, 7, 9, 8}, run}}), {1, 2, 3, 4}},
        {"no type", MakeGi(7, Masks565, box, {{box, run}}), {0, 0, 0, 0}},
        {"no palette", MakeGi(4, Masks565, box, {{box, ByteArray(12, 1)}, {{}, {}}}), {0, 0, 0, 0}},
        {"negative", MakeGi(1, Masks565, {4, 2, 1, 6}, {{box, run}}), {4, 2, 0, 0}},
        {"huge", MakeGi(1, Masks565, {0, 0, 1 << 20, 1 << 20}, {{box, run}}), {0, 0, 0, 0}},
        {"out of proportion", MakeGi(1, Masks565, {0, 0, 8192, 8192}, {{box, run}}), {0, 0, 0, 0}},
    };
    for (const Case &one : blank) {
        const FrameBuf picture = Decode(one.gi);
        EXPECT_EQ(PlaceOf(picture), one.place) << one.name;
        EXPECT_EQ(picture.Pixels.size(), std::size_t(picture.Width * picture.Height * 4)) << one.name;
        EXPECT_THAT(picture.Pixels, Each(0)) << one.name;
        EXPECT_EQ(picture.Kind, "GI") << one.name;
        EXPECT_EQ(picture.GiType, GetLong(one.gi, 40)) << one.name;
    }
    // A sparse canvas of any size that games have is fine.
    EXPECT_EQ(Decode(MakeGi(1, Masks565, {0, 0, 4096, 4096}, {{box, run}})).Width, 4096);
}

TEST(GiDecoder, PlacesLayers)
{
    // Skips three, draws the fourth and fifth pixel, and a row without any.
    const ByteArray rows = {0x03, 0x82, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0x80};
    const FrameBuf picture = Decode(
        MakeGi(1, Masks565, {-2, 0, 6, 3}, {{{0xFFFFFF + 1, 0xFFFFFF + 1, 6, 2}, MakeRunLayer(6, 2, rows)}}));
    for (std::int32_t i = 0; i < 24; i++)
        EXPECT_EQ(PixelAt(picture, i % 8, i / 8), i == 5 || i == 6 ? 0xFFFFFFFFU : 0)
            << i; // left and top read as 0

    // Rows that claim more bytes than the layer has.
    ByteArray layer = MakeRunLayer(3, 1, {0x81, 0xFF, 0xFF});
    PutLong(layer, 0, 0x7FFFFFFF);
    const FrameBuf broken = Decode(MakeGi(1, Masks565, {0, 0, 3, 1}, {{{0, 0, 3, 1}, layer}}));
    EXPECT_EQ(PixelAt(broken, 0, 0), 0xFFFFFFFFU);
    EXPECT_EQ(PixelAt(broken, 1, 0), 0U);
}

TEST(GiDecoder, LeavesOtherBytesAlone)
{
    FrameBuf picture;
    picture.Kind = "kept";
    std::int32_t offset = 3;
    ByteArray buffer = {9, 9, 9};
    const ByteArray gi = MakeGi(0, Masks8888, {0, 0, 1, 1}, {{{0, 0, 1, 1}, MakePlane(1)}});
    buffer.insert(buffer.end(), gi.begin(), gi.end());
    for (std::int32_t wrong : {0, 4, -1, ByteCount(buffer), ByteCount(buffer) - 63, INT32_MAX}) {
        DecodeGi(picture, buffer, wrong);
        EXPECT_EQ(picture.Kind, "kept") << wrong;
    }
    DecodeGi(picture, buffer, offset);
    EXPECT_EQ(offset, 3);
    EXPECT_EQ(PixelAt(picture, 0, 0), 0x01010101U);

    // Decoding again into the same memory leaves nothing of before.
    const std::uint8_t *memory = picture.Pixels.data();
    picture.Width = picture.Height = 0;
    std::int32_t start = 0;
    DecodeGi(picture, MakeGi(1, Masks565, {0, 0, 1, 1}, {{{}, {}}}), start);
    EXPECT_EQ(picture.Pixels.data(), memory);
    EXPECT_EQ(PixelAt(picture, 0, 0), 0U);
}

// What comes back is what goes in, up to the 16-bit colours: coding it again gives the same bytes.
TEST(GiDecoder, RoundTrips)
{
    std::mt19937 random(31);
    for (int round = 0; round < 60; round++)
        for (std::int32_t transClass = 0; transClass <= 2; transClass++) {
            const FrameBuf picture = RandomPicture(random, 1 + round * 3, 1 + round % 7, transClass);
            for (std::int32_t type = 0; type <= (transClass == 0 ? 0 : 4); type++) {
                ByteArray gi, again;
                EncodeGi(gi, picture, type, transClass, round % 2 == 0);
                FrameBuf decoded = Decode(gi);
                if (type == 4) {
                    decoded.X = picture.X;
                    decoded.Y = picture.Y;
                }
                ASSERT_EQ(PlaceOf(decoded), PlaceOf(picture));
                if (type == 4 || (type == 0 && transClass != 0)) { // fewer than 256 colours
                    ASSERT_EQ(decoded.Pixels, picture.Pixels);
                }
                // Type 1 has no partly transparent pixels; type 3 may order its palette in another way.
                for (std::int32_t i = 0; type != 1 && i < picture.Width * picture.Height; i++) {
                    const std::uint32_t before = Load32(&picture.Pixels[std::size_t(i) * 4]);
                    const std::uint32_t after = Load32(&decoded.Pixels[std::size_t(i) * 4]);
                    ASSERT_EQ(PackPremultipliedPixel(after), PackPremultipliedPixel(before))
                        << type << ' ' << i;
                    ASSERT_EQ(InvAlpha6(after >> 24), InvAlpha6(before >> 24)) << type << ' ' << i;
                }
                EncodeGi(again, decoded, type, transClass, round % 2 == 0);
                if (type != 3) {
                    ASSERT_EQ(again, gi) << type << ' ' << transClass << ' ' << round;
                }
            }
        }
}

// Drawing onto a canvas that cuts the GI off shows the part that a canvas around both shows there.
TEST(GiDecoder, ClipsToTheCanvas)
{
    std::mt19937 random(32);
    for (int round = 0; round < 600; round++) {
        const std::int32_t transClass = round % 3;
        const std::int32_t type = transClass == 0 ? 0 : std::int32_t(random() % 4);
        FrameBuf frame = RandomPicture(random, 1 + std::int32_t(random() % 300),
                                       1 + std::int32_t(random() % 9), transClass);
        const bool plane = type == 0; // must not begin left of or above the canvas
        frame.X = plane ? std::int32_t(random() % 20) : std::int32_t(random() % 340) - 320;
        frame.Y = plane ? std::int32_t(random() % 10) : std::int32_t(random() % 20) - 10;
        ByteArray gi;
        EncodeGi(gi, frame, type, transClass, round % 2 == 0);

        FrameBuf canvas = RandomPicture(random, 20, 10, 2);
        canvas.X = canvas.Y = 0;
        FrameBuf around = MakeCanvas({plane ? 0 : -400, plane ? 0 : -20, 400, 40});
        for (std::int32_t i = 0; i < 200; i++)
            SetPixel(around, i % 20 - around.X, i / 20 - around.Y, PixelAt(canvas, i % 20, i / 20));
        std::int32_t offset = 0;
        DecodeGi(canvas, gi, offset);
        DecodeGi(around, gi, offset);
        ASSERT_THAT(PlaceOf(canvas), ElementsAre(0, 0, 20, 10));
        for (std::int32_t i = 0; i < 200; i++)
            ASSERT_EQ(PixelAt(canvas, i % 20, i / 20), PixelAt(around, i % 20 - around.X, i / 20 - around.Y))
                << "type " << type << " round " << round << " pixel " << i;
    }
}

// Type 4 fills a canvas of its own size, and lies at its place on any other; transparent pixels count.
TEST(GiDecoder, DrawsIndexedPlanesOntoCanvases)
{
    ByteArray palette(1024, 0);
    std::fill_n(palette.begin() + 4, 4, std::uint8_t(0x77));
    const ByteArray gi = MakeGi(4, Masks565, {4, 4, 6, 5}, {{{4, 4, 6, 5}, {1, 0}}, {{}, palette}});
    for (const GiRect &place :
         {GiRect{0, 0, 2, 1}, GiRect{4, 3, 7, 6}, GiRect{5, 4, 8, 6}, GiRect{6, 4, 9, 9}}) {
        FrameBuf canvas = MakeCanvas(place);
        std::fill(canvas.Pixels.begin(), canvas.Pixels.end(), std::uint8_t(9));
        std::int32_t offset = 0;
        DecodeGi(canvas, gi, offset);
        const bool own = canvas.Width == 2;
        for (std::int32_t y = 0; y < canvas.Height; y++)
            for (std::int32_t x = 0; x < canvas.Width; x++) {
                const std::int32_t column = own ? x : canvas.X + x - 4, row = own ? y : canvas.Y + y - 4;
                const std::uint32_t expected = row != 0      ? 0x09090909
                                               : column == 0 ? 0x77777777
                                               : column == 1 ? 0
                                                             : 0x09090909;
                EXPECT_EQ(PixelAt(canvas, x, y), expected) << place.Left << ": " << x << ' ' << y;
            }
    }
}

} // namespace
} // namespace wb::test
