#include "rastgl/rastgl.h"
#include "rastgl/rowrle.h"
#include "rastgl/rows565.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>
#include <vector>

namespace
{

using Bytes = std::vector<std::uint8_t>;
using Draw = void (*)(std::uint8_t *, std::int32_t, const std::uint8_t *);

Bytes MakeLayer(std::uint32_t width, std::uint32_t height, const Bytes &palette, const Bytes &rows)
{
    Bytes layer(wb::rowrle::HeaderSize + palette.size() + rows.size());
    wb::rowrle::PutHeader(layer.data(), {std::uint32_t(rows.size()), width, height});
    std::copy(rows.begin(), rows.end(),
              std::copy(palette.begin(), palette.end(), layer.begin() + wb::rowrle::HeaderSize));
    return layer;
}

// One row of coded pixels without a gap.
Bytes MakeRow(const Bytes &coded, std::size_t pixelBytes)
{
    Bytes row;
    for (std::size_t at = 0; at < coded.size();) {
        const std::size_t pixels = std::min<std::size_t>((coded.size() - at) / pixelBytes, 127);
        row.push_back(wb::rowrle::RunControl(int(pixels)));
        row.insert(row.end(), coded.begin() + std::ptrdiff_t(at),
                   coded.begin() + std::ptrdiff_t(at + pixels * pixelBytes));
        at += pixels * pixelBytes;
    }
    row.push_back(0);
    return row;
}

struct Premultiplied {
    std::uint8_t transparency;
    std::uint16_t colour;
};

void DrawBoth(Bytes &canvas, const std::vector<Premultiplied> &pixels)
{
    Bytes alphas, colours;
    for (const Premultiplied &pixel : pixels) {
        alphas.push_back(pixel.transparency);
        colours.push_back(pixel.colour & 255);
        colours.push_back(pixel.colour >> 8);
    }
    const auto width = std::uint32_t(pixels.size());
    VTGR_AlphaBuf_Draw_RGBA(canvas.data(), 0, MakeLayer(width, 1, {}, MakeRow(alphas, 1)).data());
    VTGR_TransAlphaBuf_DrawRGBA_16(canvas.data(), 0, MakeLayer(width, 1, {}, MakeRow(colours, 2)).data());
}

// Of every transparency, each colour that a pixel of such an alpha has.
TEST(Layers, GiveBackWhatWasCoded)
{
    for (int t = 0; t < 63; t++) {
        std::array<bool, 65536> possible{};
        for (int a = 1; a < 255; a++) {
            if (wb::InvAlpha6(a) != t)
                continue;
            std::array<bool, 32> five{};
            std::array<bool, 64> six{};
            for (int c = 0; c < 256; c++) {
                const std::uint8_t p = wb::BlendOver(0, c, a);
                five[wb::Pack565(p, 0, 0) >> 11] = true;
                six[wb::Pack565(0, p, 0) >> 5] = true;
            }
            for (std::size_t v = 0; v < possible.size(); v++)
                possible[v] = possible[v] || (five[v >> 11] && six[v >> 5 & 63] && five[v & 31]);
        }
        std::vector<Premultiplied> pixels;
        for (std::size_t v = 0; v < possible.size(); v++)
            if (possible[v])
                pixels.push_back({std::uint8_t(t), std::uint16_t(v)});
        ASSERT_FALSE(pixels.empty());

        Bytes canvas(pixels.size() * 4);
        DrawBoth(canvas, pixels);
        for (std::size_t i = 0; i < pixels.size(); i++) {
            const std::uint32_t drawn = wb::Load32(&canvas[i * 4]);
            ASSERT_EQ(wb::InvAlpha6(drawn >> 24), t);
            ASSERT_EQ(wb::PackPremultipliedPixel(drawn), pixels[i].colour) << t << ' ' << i;
        }
    }
}

struct Case {
    std::vector<Premultiplied> pixels;
    Bytes canvas;
};

// Runs of one to 69 pixels over opaque, graded and partly empty canvases.
Case RandomCase(std::mt19937 &random, int round)
{
    Case made;
    const std::size_t count = 1 + std::size_t(round) % 69;
    for (std::size_t i = 0; i < count; i++) {
        // A premultiplied colour is not above its alpha.
        const std::uint32_t a = wb::AlphaOfTransparency(random() % 64);
        const std::uint32_t pixel = random();
        made.pixels.push_back({wb::InvAlpha6(a), wb::PackPremultipliedPixel((pixel & 0xFFFFFF) | a << 24)});
        const std::uint32_t below = random();
        const std::uint32_t alpha = round % 3 == 0 ? 255 : random() % 4 == 0 ? 0 : below >> 24;
        made.canvas.resize(made.canvas.size() + 4);
        wb::Store32(&made.canvas[i * 4], alpha == 0 ? 0 : (below & 0xFFFFFF) | alpha << 24);
    }
    return made;
}

TEST(Layers, ComposeSourceOver)
{
    std::mt19937 random(11);
    for (int round = 0; round < 3000; round++) {
        const auto [pixels, before] = RandomCase(random, round);
        Bytes canvas = before;
        DrawBoth(canvas, pixels);
        for (std::size_t i = 0; i < pixels.size(); i++) {
            const double source = wb::AlphaOfTransparency(pixels[i].transparency) / 255.0;
            const std::uint8_t *below = &before[i * 4], *drawn = &canvas[i * 4];
            const double through = below[3] / 255.0 * (1 - source);
            ASSERT_NEAR(drawn[3], (source + through) * 255, 0.5001) << round << ' ' << i;
            const std::uint32_t wide = wb::Widen565(pixels[i].colour);
            for (int channel = 0; channel < 3 && drawn[3] != 0; channel++) {
                const double sum = (wide >> (8 * channel) & 255) + below[channel] * through;
                ASSERT_NEAR(drawn[channel], std::min(255.0, sum * 255 / drawn[3]), 1.0001)
                    << round << ' ' << i << ' ' << channel;
            }
        }
    }
}

TEST(Layers, IndexedDrawsAsTheTwoLayersDo)
{
    std::mt19937 random(12);
    for (int round = 0; round < 300; round++) {
        const auto [pixels, before] = RandomCase(random, round);
        Bytes expected = before, drawn = before, indexes, palette(wb::rowrle::AlphaPaletteSize);
        for (std::size_t i = 0; i < pixels.size(); i++) {
            indexes.push_back(std::uint8_t(255 - i));
            wb::Store16(&palette[indexes[i] * std::size_t(4)], pixels[i].colour);
            palette[indexes[i] * std::size_t(4) + 2] = pixels[i].transparency;
        }
        DrawBoth(expected, pixels);
        const auto width = std::uint32_t(pixels.size());
        VTGR_AlphaIndexed_AlphaDrawRGBA_16(drawn.data(), 0,
                                           MakeLayer(width, 1, palette, MakeRow(indexes, 1)).data());
        ASSERT_EQ(drawn, expected) << round;
    }
}

// What rows of a layer of 4 x 3 pixels draw: '#' where a pixel is drawn.
TEST(Layers, DrawCodedPixelsOnly)
{
    struct Row {
        Bytes coded; // one byte a pixel
        std::string drawn;
    };
    const std::vector<Row> cases = {
        {{0x80, 0x82, 1, 1, 0, 0x03, 0x81, 1, 0}, "....##.....#"},
        {{0x84, 1, 1, 1, 1, 0, 0, 0x02, 0x82, 1, 1, 0}, "####......##"},
        {{0x86, 1, 1, 1, 1, 1, 1, 0, 0x81, 1, 0},
         "#####......."}, // a run beyond the width, then the next row
        {{0x03, 0x83, 1, 1, 1, 0x81, 1, 0, 0x80, 0x81, 1, 0}, "...#....#..."},
        {{0x7F, 0x7F, 0x81, 1, 0, 0x81, 1, 0}, "....#......."},
        {{0x81, 1, 0x80, 0x81, 1, 0, 0x80, 0x80, 0x84, 1, 1, 1, 1, 0},
         "##.........."},                           // 0x80 amid a row; a fourth row
        {{0x81, 1, 0, 0x84, 1, 1}, "#...##......"}, // breaks off in a run
        {{0x81, 1, 0, 0x84}, "#..........."},
        {{}, "............"},
    };
    Bytes palette(wb::rowrle::OpaquePaletteSize, 0xFF);
    for (const Row &row : cases) {
        // In a larger canvas, both ways round.
        for (const int step : {24, -24}) {
            Bytes canvas(6 * 5 * 4);
            std::uint8_t *first = &canvas[std::size_t((step > 0 ? 1 : 3) * 24 + 4)];
            VTGR_AlphaIndexed_DrawRGBA_16(first, step, MakeLayer(4, 3, palette, row.coded).data());
            std::string drawn;
            int all = 0;
            for (int y = 0; y < 3; y++)
                for (int x = 0; x < 4; x++)
                    drawn += wb::Load32(first + y * step + x * 4) == 0xFFFFFFFF ? '#' : '.';
            for (std::size_t i = 3; i < canvas.size(); i += 4)
                all += canvas[i] != 0;
            EXPECT_EQ(drawn, row.drawn);
            EXPECT_EQ(all, std::count(drawn.begin(), drawn.end(), '#')) << "outside the layer: " << row.drawn;
        }
    }
}

// Any bytes as rows, in blocks that end with them: the sanitizers see whatever is read or written outside.
TEST(Layers, BearAnyRows)
{
    std::mt19937 random(13);
    const std::array<std::pair<Draw, std::size_t>, 7> draws = {{{VTGR_TransBuf_DrawRGBA_16, 0},
                                                                {VTGR_AlphaBuf_Draw_RGBA, 0},
                                                                {VTGR_TransAlphaBuf_DrawRGBA_16, 0},
                                                                {VTGR_AlphaIndexed_DrawRGBA_16, 512},
                                                                {VTGR_AlphaIndexed_AlphaDrawRGBA_16, 1024},
                                                                {VTGR_F5_DrawRGBA, 0},
                                                                {VTGR_F6_DrawRGBA, 0}}};
    for (int round = 0; round < 4000; round++) {
        Bytes rows(random() % 400);
        for (std::uint8_t &byte : rows)
            byte = random() % 3 == 0 ? random() % 4 + 0x7E : random() & 255;
        const std::uint32_t width = 1 + random() % 140, height = 1 + random() % 9;
        const auto &[draw, paletteBytes] = draws[std::size_t(round) % draws.size()];
        const Bytes layer = MakeLayer(width, height, Bytes(paletteBytes, std::uint8_t(round)), rows);
        const Bytes before(width * height * 4, std::uint8_t(round / 7));
        Bytes canvas = before;
        draw(canvas.data(), std::int32_t(width * 4), layer.data());
        if (draw == VTGR_F5_DrawRGBA || draw == VTGR_F6_DrawRGBA) {
            ASSERT_EQ(canvas, before);
        }
    }
}

} // namespace
