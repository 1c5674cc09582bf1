#include "madegi.h"

#include <gmock/gmock.h>

namespace wb::test
{
namespace
{

// A 32-bit plane of the pixels 0x01010101, 0x02020202, ..., top row first.
ByteArray MakePlane(std::uint8_t pixels)
{
    ByteArray plane;
    for (std::uint8_t i = 1; i <= pixels; i++)
        plane.insert(plane.end(), 4, i);
    return plane;
}

TEST(GiDecoder, ReadsPlanesTopRowFirst)
{
    const FrameBuf wide = Decode(MakeGi(0, Masks8888, {5, 6, 8, 8}, {{{5, 6, 8, 8}, MakePlane(6)}}));
    EXPECT_EQ(PlaceOf(wide), (GiRect{5, 6, 8, 8}));
    EXPECT_EQ(wide.Kind, "GI");
    EXPECT_EQ(Load32(wide.Pixels.data()), 0x04040404U) << "the bottom row comes first in memory";
    EXPECT_EQ(PixelAt(wide, 2, 0), 0x03030303U);

    const GiRect place = {3, 3, 4, 5};
    const FrameBuf narrow = Decode(MakeGi(0, Masks565, place, {{place, {0x00, 0xF8, 0x1F, 0x00}}}));
    EXPECT_EQ(PixelAt(narrow, 0, 0), 0xFFFF0000U);
    EXPECT_EQ(PixelAt(narrow, 0, 1), 0xFF0000FFU);
}

// Type 4 fills a canvas of its own size, and lies at its place on any other; transparent pixels count.
TEST(GiDecoder, DrawsIndexedPlanesOntoCanvases)
{
    ByteArray palette(1024, 0);
    PutLong(palette, 4, 0x40302010); // R, G, B, A
    const ByteArray gi = MakeGi(4, Masks565, {4, 4, 6, 5}, {{{4, 4, 6, 5}, {1, 0}}, {{}, palette}});
    const FrameBuf fresh = Decode(gi);
    EXPECT_EQ(PlaceOf(fresh), (GiRect{0, 0, 2, 1})) << "it leaves the place as it is";
    EXPECT_EQ(PixelAt(fresh, 0, 0), 0x40102030U);
    for (const GiRect &place : {GiRect{0, 0, 2, 1}, {4, 3, 7, 6}, {5, 4, 8, 6}, {6, 4, 9, 9}}) {
        FrameBuf expected = MakeCanvas(place, 9);
        const GiRect own = place.Left == 0 ? GiRect() : GiRect{4 - place.Left, 4 - place.Top, 0, 0};
        for (std::int32_t x = std::max(own.Left, 0); x < own.Left + 2; x++)
            SetPixel(expected, x, own.Top, x == own.Left ? 0x40102030 : 0);
        EXPECT_EQ(Decode(gi, MakeCanvas(place, 9)).Pixels, expected.Pixels) << place.Left;
    }
}

TEST(GiDecoder, SizesAndSkips)
{
    const ByteArray run = MakeRunLayer(1, 1, {0x81, 0xFF, 0xFF, 0});
    const GiRect box = {1, 2, 4, 6}, layer = {7, 7, 9, 8}, none = {};
    ByteArray cut = MakeGi(1, Masks565, box, {{box, run}});
    cut.pop_back();
    const std::tuple<const char *, ByteArray, GiRect> blank[] = {
        {"no layer 0", MakeGi(1, Masks565, box, {{{}, {}}}), box},
        {"data beyond the end", cut, box},
        {"no layers", MakeGi(2, Masks565, box, {}), box},
        {"unknown masks", MakeGi(0, {1, 2, 3, 4}, box, {{box, MakePlane(12)}}), box},
        {"plane without a whole row", MakeGi(0, Masks8888, box, {{box, MakePlane(2)}}), box},
        {"plane left of the canvas", MakeGi(0, Masks8888, box, {{{0, 2, 4, 6}, MakePlane(16)}}), box},
        {"plane above the canvas", MakeGi(0, Masks8888, box, {{{1, 1, 4, 5}, MakePlane(12)}}), box},
        {"layer too short for its palette", MakeGi(3, Masks565, box, {{box, run}, {box, run}}), box},
        {"type 5 has its layer's size", MakeGi(5, Masks565, box, {{layer, run}}), layer},
        {"type 6 has the header's", MakeGi(6, Masks565, box, {{layer, run}}), box},
        {"no type", MakeGi(7, Masks565, box, {{box, run}}), none},
        {"short palette", MakeGi(4, Masks565, box, {{box, ByteArray(12, 1)}, {{}, ByteArray(1023)}}), none},
        {"negative", MakeGi(1, Masks565, {4, 2, 1, 6}, {{box, run}}), {4, 2, 4, 2}},
        {"huge", MakeGi(1, Masks565, {0, 0, 1 << 20, 1 << 20}, {{box, run}}), none},
        {"out of proportion", MakeGi(1, Masks565, {0, 0, 8192, 8192}, {{box, run}}), none},
    };
    FrameBuf used; // an empty picture whose memory held another one
    used.Pixels.assign(4096, 7);
    for (const auto &[name, gi, place] : blank) {
        const FrameBuf picture = Decode(gi, used);
        EXPECT_EQ(PlaceOf(picture), place) << name;
        EXPECT_EQ(picture.Pixels, MakeCanvas(place).Pixels) << name;
        EXPECT_EQ(picture.Kind, "GI") << name;
        EXPECT_EQ(picture.GiType, GetLong(gi, 40)) << name;
    }
    // A sparse canvas of any size that games have is fine.
    EXPECT_EQ(Decode(MakeGi(1, Masks565, {0, 0, 4096, 4096}, {{box, run}})).Width, 4096);
}

TEST(GiDecoder, PlacesLayers)
{
    // Skips three, draws the fourth and fifth pixel, and a row without any; left and top read as 0.
    const ByteArray rows = {0x03, 0x82, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0x80};
    const GiRect bounds = {0xFFFFFF + 1, 0xFFFFFF + 1, 6, 2};
    FrameBuf expected = MakeCanvas({-2, 0, 6, 3});
    SetPixel(expected, 5, 0, 0xFFFFFFFF);
    SetPixel(expected, 6, 0, 0xFFFFFFFF);
    EXPECT_EQ(Decode(MakeGi(1, Masks565, {-2, 0, 6, 3}, {{bounds, MakeRunLayer(6, 2, rows)}})).Pixels,
              expected.Pixels);

    // Rows that claim more bytes than the layer has.
    ByteArray layer = MakeRunLayer(2, 1, {0x81, 0xFF, 0xFF});
    PutLong(layer, 0, 0x7FFFFFFF);
    const FrameBuf broken = Decode(MakeGi(1, Masks565, {0, 0, 2, 1}, {{{0, 0, 2, 1}, layer}}));
    EXPECT_THAT(broken.Pixels, testing::ElementsAre(255, 255, 255, 255, 0, 0, 0, 0));
}

TEST(GiDecoder, LeavesOtherBytesAlone)
{
    FrameBuf picture;
    picture.Kind = "kept";
    ByteArray buffer = {9, 9, 9};
    const ByteArray gi = MakeGi(0, Masks8888, {0, 0, 1, 1}, {{{0, 0, 1, 1}, MakePlane(1)}});
    buffer.insert(buffer.end(), gi.begin(), gi.end());
    for (std::int32_t wrong : {0, 4, -1, ByteCount(buffer), ByteCount(buffer) - 63, INT32_MAX}) {
        DecodeGi(picture, buffer, wrong);
        EXPECT_EQ(picture.Kind, "kept") << wrong;
    }
    std::int32_t offset = 3;
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
void ExpectRoundTrip(FrameBuf picture, std::int32_t type, std::int32_t transClass, bool crop)
{
    if (type == 4) // which leaves the place as it is
        picture.X = picture.Y = 0;
    const ByteArray gi = Encode(picture, type, transClass, crop);
    const FrameBuf decoded = Decode(gi);
    ASSERT_EQ(PlaceOf(decoded), PlaceOf(picture));
    if (type == 4 || (type == 0 && transClass != 0)) { // fewer than 256 colours
        ASSERT_EQ(decoded.Pixels, picture.Pixels);
    }
    // Type 1 has no partly transparent pixels; type 3 may order its palette in another way.
    for (std::size_t i = 0; type != 1 && i < picture.Pixels.size(); i += 4) {
        const std::uint32_t before = Load32(&picture.Pixels[i]), after = Load32(&decoded.Pixels[i]);
        ASSERT_EQ(PackPremultipliedPixel(after), PackPremultipliedPixel(before)) << i;
        ASSERT_EQ(InvAlpha6(after >> 24), InvAlpha6(before >> 24)) << i;
    }
    ASSERT_TRUE(type == 3 || Encode(decoded, type, transClass, crop) == gi);
}

TEST(GiDecoder, RoundTrips)
{
    std::mt19937 random(31);
    for (int round = 0; round < 60; round++)
        for (std::int32_t transClass = 0; transClass <= 2; transClass++) {
            const FrameBuf picture = RandomPicture(random, 1 + round * 3, 1 + round % 7, transClass);
            for (std::int32_t type = 0; type <= (transClass == 0 ? 0 : 4); type++)
                ASSERT_NO_FATAL_FAILURE(ExpectRoundTrip(picture, type, transClass, round % 2 == 0))
                    << type << ' ' << transClass << ' ' << round;
        }
}

// Types 2 and 3 code the same pixels, whatever they are drawn over.
TEST(GiDecoder, LaysIndexedPixelsOverWhatIsThere)
{
    std::mt19937 random(37);
    for (int round = 0; round < 20; round++) {
        FrameBuf canvas = RandomPicture(random, 60, 5, round % 3);
        canvas.X = canvas.Y = 0;
        FrameBuf picture = RandomPicture(random, 60, 5, 2);
        picture.X = picture.Y = 0;
        ASSERT_EQ(Decode(Encode(picture, 3, 2, true), canvas).Pixels,
                  Decode(Encode(picture, 2, 2, true), canvas).Pixels)
            << round;
    }
}

// Drawing onto a canvas that cuts the GI off shows the part that a canvas around both shows there.
TEST(GiDecoder, ClipsToTheCanvas)
{
    std::mt19937 random(32);
    const auto within = [&random](int low, int high) { return low + int(random() % unsigned(high - low)); };
    for (int round = 0; round < 600; round++) {
        const std::int32_t transClass = round % 3;
        const std::int32_t type = transClass == 0 ? 0 : within(0, 4);
        const bool plane = type == 0; // must not begin left of or above the canvas
        FrameBuf frame = RandomPicture(random, within(1, 301), within(1, 10), transClass);
        frame.X = within(plane ? 0 : -320, 20);
        frame.Y = within(plane ? 0 : -10, 10);
        const ByteArray gi = Encode(frame, type, transClass, round % 2 == 0);

        FrameBuf canvas = RandomPicture(random, 20, 10, 2);
        canvas.X = canvas.Y = 0;
        FrameBuf around = MakeCanvas({plane ? 0 : -400, plane ? 0 : -20, 400, 40});
        for (std::int32_t i = 0; i < 200; i++)
            SetPixel(around, i % 20 - around.X, i / 20 - around.Y, PixelAt(canvas, i % 20, i / 20));
        around = Decode(gi, around);
        const auto shown = [&around](int x, int y) { return PixelAt(around, x - around.X, y - around.Y); };
        ASSERT_EQ(Decode(gi, canvas).Pixels, MakePicture(20, 10, shown).Pixels)
            << "type " << type << " round " << round;
    }
}

// Damaged files: no read or write outside (which the sanitizers see), no hang, no picture out of proportion.
void DecodeBothWays(ByteView gi)
{
    const FrameBuf fresh = Decode(gi);
    ASSERT_EQ(std::int64_t(fresh.Pixels.size()), PictureBytes(fresh.Width, fresh.Height));
    ASSERT_LE(fresh.Pixels.size() / 4, 4096U * 4096 + gi.size() * 4096);

    const FrameBuf canvas = Decode(gi, MakeCanvas({-3, -2, 37, 8}));
    ASSERT_EQ(PlaceOf(canvas), (GiRect{-3, -2, 37, 8}));
    ASSERT_EQ(canvas.Pixels.size(), 40U * 10 * 4);
}

std::vector<ByteArray> EveryKind()
{
    std::mt19937 random(41);
    std::vector<ByteArray> files;
    for (std::int32_t transClass = 0; transClass <= 2; transClass++) {
        FrameBuf picture = RandomPicture(random, 31, 7, transClass);
        picture.X = picture.Y = 1;
        for (std::int32_t type = 0; type <= (transClass == 0 ? 0 : 4); type++)
            files.push_back(Encode(picture, type, transClass, transClass == 2));
    }
    for (std::int32_t type : {5, 6})
        files.push_back(MakeGi(type, Masks565, {0, 0, 5, 5}, {{{0, 0, 5, 5}, ByteArray(20, 1)}}));
    return files;
}

TEST(GiDecoder, SurvivesTruncation)
{
    for (const ByteArray &file : EveryKind())
        for (auto end = file.begin(); end != file.end(); ++end)
            ASSERT_NO_FATAL_FAILURE(DecodeBothWays(ByteArray(file.begin(), end))) << end - file.begin();
}

TEST(GiDecoder, SurvivesDamage)
{
    std::mt19937 random(42);
    const std::int32_t nasty[] = {0,  1,       -1,      127,        INT32_MAX,     INT32_MIN,
                                  40, 0x10000, 1 << 24, -(1 << 24), INT32_MAX - 3, 4096};
    const std::vector<ByteArray> files = EveryKind();
    for (std::size_t round = 0; round < 6000; round++) {
        ByteArray file = files[round % files.size()];
        for (unsigned changes = 1 + random() % 4; changes > 0; changes--) {
            // Fields of header, table and layer headers, or any byte.
            const std::uint32_t data = std::uint32_t(GetLong(file, 64)) % 4096 + 16;
            const std::uint32_t end = std::min(std::uint32_t(file.size()), data);
            if (random() % 2 == 0)
                PutLong(file, std::int32_t(4 + 4 * (random() % ((end - 4) / 4))),
                        nasty[random() % std::size(nasty)]);
            else
                file[random() % file.size()] = random() & 255;
        }
        ASSERT_NO_FATAL_FAILURE(DecodeBothWays(file)) << round;
    }
}

} // namespace
} // namespace wb::test
