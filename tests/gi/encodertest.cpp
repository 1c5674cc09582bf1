#include "madegi.h"

#include <gmock/gmock.h>

namespace wb::test
{
namespace
{

using testing::ElementsAre;

// The pixels that go into a layer of type 1 or 2, all others 0.
FrameBuf WorkLayer(const FrameBuf &picture, std::size_t layer, std::int32_t transClass)
{
    FrameBuf work = picture;
    for (std::size_t i = 0; i < work.Pixels.size(); i += 4) {
        const std::uint8_t alpha = work.Pixels[i + 3];
        if (layer == 0 ? alpha != 255 : transClass != 2 || alpha == 255 || alpha == 0)
            Store32(&work.Pixels[i], 0);
    }
    return work;
}

void AppendRow(ByteArray &out, const FrameBuf &work, std::int32_t y, bool isTransparency)
{
    const std::size_t start = out.size();
    bool anyVisible = false;
    for (std::int32_t x = 0; x < work.Width;) {
        // As many pixels alike as one byte can count.
        const bool visible = PixelAt(work, x, y) != 0;
        const std::size_t control = out.size();
        out.push_back(visible ? 0x80 : 0);
        for (int run = 0; run < 127 && x < work.Width && (PixelAt(work, x, y) != 0) == visible; run++, x++) {
            const std::uint32_t pixel = PixelAt(work, x, y);
            const std::uint16_t coded =
                isTransparency ? InvAlpha6(pixel >> 24) : PackPremultipliedPixel(pixel);
            out[control]++;
            if (visible)
                out.push_back(coded & 255);
            if (visible && !isTransparency)
                out.push_back(coded >> 8);
        }
        anyVisible = anyVisible || visible;
    }
    if (!anyVisible)
        out.resize(start);
    out.push_back(anyVisible ? 0 : 0x80);
}

// Types 1 and 2 step by step and pixel by pixel: slow, and simple enough to be believed.
ByteArray EncodePlainly(const FrameBuf &picture, std::int32_t type, std::int32_t transClass, bool crop)
{
    std::vector<MadeLayer> layers(std::size_t(GiLayerCount(type)));
    for (std::size_t i = 0; i < layers.size(); i++) {
        FrameBuf work = WorkLayer(picture, i, transClass);
        if (crop)
            work = CropToContent(work);
        ByteArray rows;
        for (std::int32_t y = 0; y < work.Height; y++)
            AppendRow(rows, work, y, i == 2);
        if (!rows.empty())
            layers[i] = {PlaceOf(work), MakeRunLayer(work.Width, work.Height, rows)};
    }
    return MakeGi(type, Masks565, PlaceOf(picture), layers);
}

TEST(GiEncoder, WritesWhatThePlainStepsGive)
{
    std::mt19937 random(21);
    const auto compare = [](const FrameBuf &picture, std::int32_t transClass) {
        for (std::int32_t type = 1; type <= 2; type++)
            for (const bool crop : {false, true})
                ASSERT_EQ(Encode(picture, type, transClass, crop),
                          EncodePlainly(picture, type, transClass, crop))
                    << picture.Width << 'x' << picture.Height << ' ' << type << ' ' << transClass;
    };
    for (unsigned round = 0; round < 60; round++) {
        const auto width = std::int32_t(1 + random() % (round % 4 == 0 ? 700 : 70));
        const auto height = std::int32_t(1 + random() % 12);
        for (std::int32_t transClass : {1, 2}) // it may be less than the picture has
            compare(RandomPicture(random, width, height, round % 5 == 0 ? 2 : transClass), transClass);
    }
    // Pixels of alpha 0 with a colour belong to no layer.
    compare(MakePicture(300, 3, [](int x, int) { return std::uint32_t(x % 256) << 24 | 0x123456; }), 2);
}

TEST(GiEncoder, CodesRows)
{
    // 130 empty pixels, 300 visible ones, 127 empty, one visible, nine empty; and an empty row.
    const auto colour = [](int x, int y) { return y == 0 && ((x >= 130 && x < 430) || x == 557) ? ~0U : 0; };
    constexpr int Whole = 1 + 127 * 2; // bytes of a run, of which the first looks as white does
    ByteArray rows;
    for (const int byte : {0x7F, 0x03, -2 * Whole, 0xAE, -46 * 2, 0x7F, 0x81, -2, 9, 0, 0x80})
        rows.insert(rows.end(), std::size_t(std::max(-byte, 1)), std::uint8_t(byte < 0 ? 0xFF : byte));
    const ByteArray gi = Encode(MakePicture(567, 2, colour), 1, 1, false);
    EXPECT_EQ(ByteArray(gi.begin() + 96, gi.end()), MakeRunLayer(567, 2, rows));
}

TEST(GiEncoder, LaysOutFiles)
{
    const GiRect place = {7, -3, 8, -2}, wide = {0, 0, 3, 2};
    const ByteArray opaque = Encode(MakeCanvas(place, 0xFFC80000), 1, 1, false);
    std::vector<std::int32_t> fields;
    for (std::int32_t position = 0; position < ByteCount(opaque); position += 4)
        fields.push_back(GetLong(opaque, position));
    EXPECT_THAT(fields, ElementsAre(0x6967, 1, 7, -3, 8, -2, 0xF800, 0x07E0, 0x1F, 0, 1, 1, 0, 0, 0, 0, 96,
                                    20, 7, -3, 8, -2, 0, 0, 4, 1, 1, 0, 0x00C00081));
    // Nothing opaque; premultiplied colour; transparency byte.
    EXPECT_EQ(Encode(MakeCanvas(place, 0x80C80000), 2, 2, true),
              MakeGi(2, Masks565, place,
                     {{},
                      {place, MakeRunLayer(1, 1, {0x81, 0x00, 0x60, 0})},
                      {place, MakeRunLayer(1, 1, {0x81, 31, 0})}}));
    EXPECT_EQ(Encode(MakeCanvas(wide), 1, 1, true), MakeGi(1, Masks565, wide, {{}})) << "cropped away";
    ByteArray palette(512, 0);
    palette[2] = palette[3] = 0xFF;
    EXPECT_EQ(Encode(MakeCanvas(place, 0xFFFFFFFF), 3, 2, true),
              MakeGi(3, Masks565, place, {{place, MakeRunLayer(1, 1, {0x81, 1, 0}, palette)}, {}}));
    FrameBuf dot = MakeCanvas(wide, 0x00090909); // invisible
    SetPixel(dot, 1, 1, 0x01020304);
    EXPECT_EQ(Encode(dot, 0, 2, true), MakeGi(0, Masks8888, wide, {{{1, 1, 2, 2}, {4, 3, 2, 1}}}));
}

TEST(GiEncoder, RefusesAndYields)
{
    const FrameBuf picture = MakeCanvas({0, 0, 2, 2});
    FrameBuf untrue = picture;
    untrue.Width = 3; // its pixels are fewer
    const std::tuple<FrameBuf, std::int32_t, std::int32_t> refused[] = {
        {{}, 1, 1},      {untrue, 0, 1},  {picture, 5, 2}, {picture, 6, 2}, {picture, -1, 1},
        {picture, 1, 0}, {picture, 4, 0}, {picture, 0, 3}, {picture, 0, -1}};
    for (const auto &[wrong, type, transClass] : refused) {
        ByteArray out = {1, 2, 3};
        EXPECT_EQ(EncodeGi(out, wrong, type, transClass, false), 0) << type << transClass;
        EXPECT_THAT(out, ElementsAre(1, 2, 3));
    }
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
    EXPECT_EQ(PlaceOf(cropped), (GiRect{12, 21, 16, 24}));
    EXPECT_EQ(PixelAt(cropped, 0, 0), 0x01AABBCCU);
    EXPECT_EQ(PixelAt(cropped, 3, 2), 0xFF000000U);
    EXPECT_EQ(cropped.Kind, "");
    for (const FrameBuf &none : {CropToContent(MakeCanvas({3, 3, 9, 9})), CropToContent({})})
        EXPECT_TRUE(PlaceOf(none) == GiRect() && none.Pixels.empty());
}

} // namespace
} // namespace wb::test
