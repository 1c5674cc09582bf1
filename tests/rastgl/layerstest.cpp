#include "rastgl/rastgl.h"
#include "rastgl/rowrle.h"
#include "rastgl/rows565.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>
#include <string>
#include <vector>

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

// A layer of one row of coded pixels without a gap.
Bytes MakeRow(const Bytes &palette, const Bytes &coded, std::size_t pixelBytes)
{
    Bytes row;
    for (std::size_t at = 0; at < coded.size(); at++) {
        if (at % (127 * pixelBytes) == 0)
            row.push_back(std::uint8_t(0x80 + std::min<std::size_t>((coded.size() - at) / pixelBytes, 127)));
        row.push_back(coded[at]);
    }
    row.push_back(0);
    return MakeLayer(std::uint32_t(coded.size() / pixelBytes), 1, palette, row);
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
    VTGR_AlphaBuf_Draw_RGBA(canvas.data(), 0, MakeRow({}, alphas, 1).data());
    VTGR_TransAlphaBuf_DrawRGBA_16(canvas.data(), 0, MakeRow({}, colours, 2).data());
}

// Of every alpha, each colour that a pixel can have.
TEST(Layers, GiveBackWhatWasCoded)
{
    for (std::uint32_t a = 1; a < 255; a++) {
        std::set<std::uint16_t> reds, greens, blues;
        for (std::uint32_t c = 0; c < 256; c++) {
            const std::uint16_t packed = wb::PackPremultipliedPixel(a << 24 | c * 0x010101);
            reds.insert(packed & 0xF800);
            greens.insert(packed & 0x07E0);
            blues.insert(packed & 0x001F);
        }
        std::vector<Premultiplied> pixels;
        for (const std::uint16_t red : reds)
            for (const std::uint16_t green : greens)
                for (const std::uint16_t blue : blues)
                    pixels.push_back({wb::InvAlpha6(std::uint8_t(a)), std::uint16_t(red | green | blue)});
        Bytes canvas(pixels.size() * 4);
        DrawBoth(canvas, pixels);
        for (std::size_t i = 0; i < pixels.size(); i++) {
            const std::uint32_t drawn = wb::Load32(&canvas[i * 4]);
            ASSERT_EQ(wb::InvAlpha6(drawn >> 24), pixels[i].transparency);
            ASSERT_EQ(wb::PackPremultipliedPixel(drawn), pixels[i].colour) << a << ' ' << i;
        }
    }
}

void ExpectSourceOver(const std::uint8_t *below, Premultiplied pixel, const std::uint8_t *drawn)
{
    const double source = wb::AlphaOfTransparency(pixel.transparency) / 255.0;
    const double through = below[3] / 255.0 * (1 - source);
    ASSERT_NEAR(drawn[3], (source + through) * 255, 0.5001);
    const std::uint32_t wide = wb::Widen565(pixel.colour);
    for (int channel = 0; channel < 3 && drawn[3] != 0; channel++) {
        const double sum = (wide >> (8 * channel) & 255) + below[channel] * through;
        ASSERT_NEAR(drawn[channel], std::min(255.0, sum * 255 / drawn[3]), 1.0001) << channel;
    }
}

// Runs of one to 69 pixels over opaque, graded and partly empty canvases.
TEST(Layers, ComposeSourceOver)
{
    std::mt19937 random(11);
    for (unsigned round = 0; round < 3000; round++) {
        const std::size_t count = 1 + round % 69;
        std::vector<Premultiplied> pixels;
        Bytes before(count * 4), indexes, palette(wb::rowrle::AlphaPaletteSize);
        for (std::size_t i = 0; i < count; i++) {
            // A premultiplied colour is not above its alpha.
            const std::uint32_t a = wb::AlphaOfTransparency(random() % 64);
            const std::uint32_t pixel = (random() & 0xFFFFFF) | a << 24;
            pixels.push_back({wb::InvAlpha6(std::uint8_t(a)), wb::PackPremultipliedPixel(pixel)});
            indexes.push_back(std::uint8_t(255 - i));
            wb::Store16(&palette[indexes[i] * std::size_t(4)], pixels[i].colour);
            palette[indexes[i] * std::size_t(4) + 2] = pixels[i].transparency;
            const bool isEmpty = round % 3 == 1 ? i + 1 < count : round % 3 == 2 && random() % 4 == 0;
            if (!isEmpty)
                wb::Store32(&before[i * 4], std::uint32_t(random()) | (round % 3 == 0 ? 0xFF000000 : 0));
        }
        Bytes canvas = before, indexed = before;
        DrawBoth(canvas, pixels);
        for (std::size_t i = 0; i < count; i++)
            ASSERT_NO_FATAL_FAILURE(ExpectSourceOver(&before[i * 4], pixels[i], &canvas[i * 4]))
                << round << ' ' << i;
        VTGR_AlphaIndexed_AlphaDrawRGBA_16(indexed.data(), 0, MakeRow(palette, indexes, 1).data());
        ASSERT_EQ(indexed, canvas) << round;
    }
}

// What rows of a layer of 4 x 3 pixels draw: '#' where a pixel is drawn.
TEST(Layers, DrawCodedPixelsOnly)
{
    const struct {
        const char *name;
        Bytes coded; // one byte a pixel
        std::string drawn;
    } cases[] = {
        {"empty row, run, skip", {0x80, 0x82, 1, 1, 0, 0x03, 0x81, 1, 0}, "....##.....#"},
        {"whole row, row end alone", {0x84, 1, 1, 1, 1, 0, 0, 0x02, 0x82, 1, 1, 0}, "####......##"},
        {"run beyond the width", {0x86, 1, 1, 1, 1, 1, 1, 0, 0x81, 1, 0}, "#####......."},
        {"run across it", {0x03, 0x83, 1, 1, 1, 0x81, 1, 0, 0x80, 0x81, 1, 0}, "...#....#..."},
        {"skip beyond the width", {0x7F, 0x7F, 0x81, 1, 0, 0x81, 1, 0}, "....#......."},
        {"0x80 amid a row", {0x81, 1, 0x80, 0x81, 1, 0, 0x80, 0x80}, "##.........."},
        {"a fourth row", {0x80, 0x80, 0x80, 0x84, 1, 1, 1, 1, 0}, "............"},
        {"breaks off in a run", {0x81, 1, 0, 0x84, 1, 1}, "#...##......"},
        {"breaks off before it", {0x81, 1, 0, 0x84}, "#..........."},
        {"nothing", {}, "............"},
    };
    const Bytes palette(wb::rowrle::OpaquePaletteSize, 0xFF);
    for (const auto &[name, coded, drawn] : cases)
        for (const bool upwards : {false, true}) {
            // In a canvas of 6 x 5, whose edges stay empty.
            std::string expected(30, '.'), seen;
            for (std::size_t y = 0; y < 3; y++)
                expected.replace((upwards ? 3 - y : 1 + y) * 6 + 1, 4, drawn, y * 4, 4);
            Bytes canvas(30 * 4);
            VTGR_AlphaIndexed_DrawRGBA_16(&canvas[upwards ? 19 * 4 : 7 * 4], upwards ? -24 : 24,
                                          MakeLayer(4, 3, palette, coded).data());
            for (std::size_t at = 0; at < canvas.size(); at += 4)
                seen += wb::Load32(&canvas[at]) == 0 ? '.' : '#';
            EXPECT_EQ(seen, expected) << name;
        }
}

// Any bytes as rows, in blocks that end with them: the sanitizers see whatever is read or written outside.
TEST(Layers, BearAnyRows)
{
    const struct {
        void (*draw)(std::uint8_t *, std::int32_t, const std::uint8_t *);
        std::size_t paletteBytes;
    } draws[] = {{VTGR_F5_DrawRGBA, 0},
                 {VTGR_F6_DrawRGBA, 0},
                 {VTGR_TransBuf_DrawRGBA_16, 0},
                 {VTGR_AlphaBuf_Draw_RGBA, 0},
                 {VTGR_TransAlphaBuf_DrawRGBA_16, 0},
                 {VTGR_AlphaIndexed_DrawRGBA_16, 512},
                 {VTGR_AlphaIndexed_AlphaDrawRGBA_16, 1024}};
    std::mt19937 random(13);
    for (unsigned round = 0; round < 4000; round++) {
        Bytes rows(random() % 400);
        for (std::uint8_t &byte : rows)
            byte = random() % 3 == 0 ? random() % 4 + 0x7E : random() & 255;
        const std::uint32_t width = 1 + random() % 140, height = 1 + random() % 9;
        const auto &[draw, paletteBytes] = draws[round % std::size(draws)];
        const Bytes layer = MakeLayer(width, height, Bytes(paletteBytes, std::uint8_t(round)), rows);
        const Bytes before(width * height * 4, std::uint8_t(round / 7));
        Bytes canvas = before;
        draw(canvas.data(), std::int32_t(width * 4), layer.data());
        const bool drawsNothing = round % std::size(draws) < 2; // the unknown types
        ASSERT_TRUE(!drawsNothing || canvas == before);
    }
}

} // namespace
