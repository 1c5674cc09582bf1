#include "rastgl/canvas.h"
#include "rastgl/colour.h"
#include "rastgl/picturefile.h"
#include "rastgl/rastgl.h"
#include "rastgl/rowrle.h"
#include "rastgl/rows565.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace
{

using Bytes = std::vector<std::uint8_t>;

Bytes MakeLayer(std::uint32_t width, std::uint32_t height, const Bytes &palette, const Bytes &rows)
{
    Bytes layer(wb::rowrle::HeaderSize + palette.size() + rows.size());
    wb::rowrle::PutHeader(layer.data(), {std::uint32_t(rows.size()), width, height});
    std::ranges::copy(rows, std::ranges::copy(palette, layer.begin() + wb::rowrle::HeaderSize).out);
    return layer;
}

// A layer of one row of pixels without a gap.
template <typename Pixel>
Bytes MakeRow(const Bytes &palette, const std::vector<Pixel> &pixels)
{
    Bytes row;
    for (std::size_t i = 0; i < pixels.size(); i++) {
        if (i % 127 == 0)
            row.push_back(std::uint8_t(0x80 + std::min<std::size_t>(pixels.size() - i, 127)));
        for (unsigned shift = 0; shift < 8 * sizeof(Pixel); shift += 8)
            row.push_back(std::uint8_t(pixels[i] >> shift));
    }
    row.push_back(0);
    return MakeLayer(std::uint32_t(pixels.size()), 1, palette, row);
}

struct Coded {
    std::vector<std::uint8_t> transparencies;
    std::vector<std::uint16_t> colours; // premultiplied

    void DrawOnto(Canvas &canvas) const
    {
        VTGR_AlphaBuf_Draw_RGBA(canvas.Bytes(), 0, MakeRow({}, transparencies).data());
        VTGR_TransAlphaBuf_DrawRGBA_16(canvas.Bytes(), 0, MakeRow({}, colours).data());
    }
};

// Of every alpha, each colour that a pixel can have.
TEST(Layers, GiveBackWhatWasCoded)
{
    for (unsigned a = 1; a < 255; a++) {
        std::vector<bool> has(65536); // the values of single channels
        for (unsigned c = 0; c < 256; c++)
            for (const unsigned channel : {0xF800U, 0x07E0U, 0x001FU})
                has[wb::PackPremultipliedPixel(a << 24 | c * 0x010101) & channel] = true;
        Coded coded;
        for (unsigned colour = 0; colour < has.size(); colour++)
            if (has[colour & 0xF800] && has[colour & 0x07E0] && has[colour & 0x001F])
                coded.colours.push_back(std::uint16_t(colour));
        coded.transparencies.assign(coded.colours.size(), wb::InvAlpha6(std::uint8_t(a)));
        Canvas canvas = Flat(int(coded.colours.size()), 1);
        coded.DrawOnto(canvas);
        for (std::size_t i = 0; i < coded.colours.size(); i++) {
            ASSERT_EQ(wb::InvAlpha6(canvas.colours[i] >> 24), coded.transparencies[i]);
            ASSERT_EQ(wb::PackPremultipliedPixel(canvas.colours[i]), coded.colours[i]) << a << ' ' << i;
        }
    }
}

void ExpectSourceOver(std::uint32_t below, std::uint8_t transparency, std::uint16_t colour,
                      std::uint32_t drawn)
{
    using rastgl::Channel;
    const double source = wb::AlphaOfTransparency(transparency) / 255.0;
    const double through = Channel(below, 3) / 255.0 * (1 - source);
    ASSERT_NEAR(Channel(drawn, 3), (source + through) * 255, 0.5001);
    for (std::size_t i = 0; i < 3 && Channel(drawn, 3) != 0; i++) {
        const double sum = Channel(wb::Widen565(colour), i) + Channel(below, i) * through;
        ASSERT_NEAR(Channel(drawn, i), std::min(255.0, sum * 255 / Channel(drawn, 3)), 1.0001) << i;
    }
}

// Runs of one to 69 pixels over opaque, graded and partly empty canvases.
TEST(Layers, ComposeSourceOver)
{
    std::mt19937 random(11);
    for (unsigned round = 0; round < 3000; round++) {
        const std::size_t count = 1 + round % 69;
        Canvas before = Noise(int(count), 1, round, round % 3 == 0 ? 0xFF000000 : 0);
        Coded coded;
        Bytes indexes, palette(wb::rowrle::AlphaPaletteSize);
        for (std::size_t i = 0; i < count; i++) {
            // A premultiplied colour is not above its alpha.
            const std::uint32_t a = wb::AlphaOfTransparency(random() % 64);
            coded.transparencies.push_back(wb::InvAlpha6(std::uint8_t(a)));
            coded.colours.push_back(wb::PackPremultipliedPixel((random() & 0xFFFFFF) | a << 24));
            indexes.push_back(std::uint8_t(255 - i));
            wb::Store16(&palette[indexes[i] * std::size_t(4)], coded.colours[i]);
            palette[indexes[i] * std::size_t(4) + 2] = coded.transparencies[i];
            if (round % 3 == 1 ? i + 1 < count : round % 3 == 2 && random() % 4 == 0)
                before.colours[i] = 0;
        }
        Canvas canvas = before, indexed = before;
        coded.DrawOnto(canvas);
        VTGR_AlphaIndexed_AlphaDrawRGBA_16(indexed.Bytes(), 0, MakeRow(palette, indexes).data());
        ASSERT_EQ(indexed, canvas) << round;
        Canvas empty = Flat(int(count), 1), copied = empty;
        VTGR_AlphaIndexed_AlphaDrawRGBA_16(empty.Bytes(), 0, MakeRow(palette, indexes).data());
        VTGR_AlphaIndexed_AlphaCopyRGBA_16(copied.Bytes(), 0, MakeRow(palette, indexes).data());
        ASSERT_EQ(copied, empty) << round;
        for (std::size_t i = 0; i < count; i++)
            ASSERT_NO_FATAL_FAILURE(ExpectSourceOver(before.colours[i], coded.transparencies[i],
                                                     coded.colours[i], canvas.colours[i]))
                << round << ' ' << i;
    }
}

TEST(Layers, DrawCodedPixelsOnly)
{
    const Bytes palette(wb::rowrle::OpaquePaletteSize, 0xFF);
    for (const picturefile::Case &each : picturefile::LoadCases("rows.txt"))
        for (const bool upwards : {false, true}) {
            const picturefile::Seen &seen = each.seen;
            // In a larger canvas, whose edges stay empty.
            Canvas expected = Flat(seen.width + 2, seen.height + 2), canvas = expected;
            const auto at = [&](Canvas &picture, int x, int y) -> std::uint32_t & {
                return picture.At(1 + x, upwards ? seen.height - y : 1 + y);
            };
            for (int i = 0; i < int(seen.pixels.size()); i++)
                at(expected, i % seen.width, i / seen.width) = seen.pixels[std::size_t(i)] * 0xFFFFFFFF;
            const int pitch = canvas.width * (upwards ? 4 : -4);
            VTGR_AlphaIndexed_DrawRGBA_16(
                reinterpret_cast<std::uint8_t *>(&at(canvas, 0, 0)), pitch,
                MakeLayer(std::uint32_t(seen.width), std::uint32_t(seen.height), palette, each.file).data());
            EXPECT_EQ(canvas, expected) << each.name;
        }
}

// Any bytes as rows, behind palettes of so many bytes, in blocks that end with them: the sanitizers see
// whatever is read or written outside.
TEST(Layers, BearAnyRows)
{
    const std::pair<decltype(&VTGR_F5_DrawRGBA), std::size_t> draws[] = {
        {VTGR_F5_DrawRGBA, 0},
        {VTGR_F6_DrawRGBA, 0},
        {VTGR_TransBuf_DrawRGBA_16, 0},
        {VTGR_AlphaBuf_Draw_RGBA, 0},
        {VTGR_TransAlphaBuf_DrawRGBA_16, 0},
        {VTGR_AlphaIndexed_DrawRGBA_16, 512},
        {VTGR_AlphaIndexed_AlphaDrawRGBA_16, 1024},
        {VTGR_AlphaIndexed_AlphaCopyRGBA_16, 1024}};
    std::mt19937 random(13);
    for (unsigned round = 0; round < 4000; round++) {
        Bytes rows(random() % 400);
        for (std::uint8_t &byte : rows)
            byte = random() % 3 == 0 ? random() % 4 + 0x7E : random() & 255;
        const std::uint32_t width = 1 + random() % 140, height = 1 + random() % 9;
        const auto &[draw, paletteBytes] = draws[round % std::size(draws)];
        const Bytes layer = MakeLayer(width, height, Bytes(paletteBytes, std::uint8_t(round)), rows);
        const Canvas before = Flat(int(width), int(height), round / 8 % 256 * 0x01010101);
        Canvas canvas = before;
        draw(canvas.Bytes(), std::int32_t(width * 4), layer.data());
        const bool drawsNothing = round % std::size(draws) < 2; // the unknown types
        ASSERT_TRUE(!drawsNothing || canvas == before);
    }
}

} // namespace
