#include "rastgl/picturefile.h"
#include "rastgl/rastgl.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

using namespace picturefile;

struct Bmp {
    std::uint32_t headerSize = 40;
    int width = 0;
    int height = 0; // below 0: top row first
    int bits = 0;
    std::uint32_t compression = 0;
    std::vector<std::uint32_t> masks; // inside headers above 40 bytes, else behind them
    std::vector<std::uint32_t> palette;
    File data;
};

File Make(const Bmp &bmp)
{
    const int entrySize = bmp.headerSize == 12 ? 3 : 4;
    Maker header;
    header.Little(4, bmp.headerSize);
    if (bmp.headerSize == 12) {
        header.Little(2, std::uint32_t(bmp.width)).Little(2, std::uint32_t(bmp.height));
        header.Little(2, 1).Little(2, std::uint32_t(bmp.bits));
    } else {
        header.Little(4, std::uint32_t(bmp.width)).Little(4, std::uint32_t(bmp.height));
        header.Little(2, 1).Little(2, std::uint32_t(bmp.bits)).Little(4, bmp.compression);
        header.Little(4, std::uint32_t(bmp.data.size())).Zeros(8);
        header.Little(4, std::uint32_t(bmp.palette.size())).Zeros(4);
    }
    for (const std::uint32_t mask : bmp.masks)
        header.Little(4, mask);
    if (header.bytes.size() < bmp.headerSize)
        header.Zeros(bmp.headerSize - header.bytes.size());
    for (const std::uint32_t colour : bmp.palette)
        header.Little(entrySize, colour);
    Maker file;
    file.Text("BM").Little(4, std::uint32_t(14 + header.bytes.size() + bmp.data.size())).Zeros(4);
    file.Little(4, std::uint32_t(14 + header.bytes.size())).Raw(header.bytes).Raw(bmp.data);
    return file.bytes;
}

constexpr std::uint32_t K = 0xFF000000;
constexpr std::uint32_t R = 0xFFFF0000;
constexpr std::uint32_t G = 0xFF00FF00;
constexpr std::uint32_t B = 0xFF0000FF;
constexpr std::uint32_t W = 0xFFFFFFFF;

struct Case {
    const char *name;
    Bmp bmp;
    int bitsPerPixel;
    std::vector<std::uint32_t> pixels; // top row first
};

const std::vector<std::uint32_t> Four = {0x000000, 0xFF0000, 0x00FF00, 0x0000FF};

const std::vector<Case> Cases = {
    {"1 bit",
     {40, 10, 2, 1, 0, {}, {0x0000FF, 0xFFFFFF}, {0x80, 0x40, 0, 0, 0x01, 0x80, 0, 0}},
     24,
     {B, B, B, B, B, B, B, W, W, B, W, B, B, B, B, B, B, B, B, W}},
    {"1 bit, OS/2 1", {12, 3, 1, 1, 0, {}, {0x0000FF, 0xFFFFFF}, {0xA0, 0, 0, 0}}, 24, {W, B, W}},
    {"4 bit", {40, 3, 2, 4, 0, {}, Four, {0x12, 0x30, 0, 0, 0x30, 0x10, 0, 0}}, 24, {B, K, R, R, G, B}},
    {"4 bit, top row first",
     {40, 3, -2, 4, 0, {}, Four, {0x12, 0x30, 0, 0, 0x30, 0x10, 0, 0}},
     24,
     {R, G, B, B, K, R}},
    {"8 bit", {40, 3, 2, 8, 0, {}, Four, {1, 2, 3, 0, 3, 0, 1, 0}}, 24, {B, K, R, R, G, B}},
    {"8 bit, OS/2 1",
     {12, 3, 1, 8, 0, {}, std::vector<std::uint32_t>(256, 0x0000FF), {1, 2, 3, 0}},
     24,
     {B, B, B}},
    {"8 bit, OS/2 2", {64, 3, 1, 8, 0, {}, Four, {1, 2, 3, 0}}, 24, {R, G, B}},
    {"8 bit, index beyond the palette", {40, 3, 1, 8, 0, {}, Four, {1, 200, 3, 0}}, 24, {R, K, B}},
    {"16 bit 5-5-5",
     {40, 4, 1, 16, 0, {}, {}, {0x00, 0x7C, 0xE0, 0x03, 0x1F, 0x00, 0xFF, 0xFF}},
     24,
     {R, G, B, W}},
    {"16 bit 5-6-5",
     {40, 4, 1, 16, 3, {0xF800, 0x07E0, 0x001F}, {}, {0x00, 0xF8, 0xE0, 0x07, 0x1F, 0, 0xFF, 0xFF}},
     24,
     {R, G, B, W}},
    {"16 bit 4-4-4-4",
     {56, 2, 1, 16, 3, {0x0F00, 0x00F0, 0x000F, 0xF000}, {}, {0x00, 0x8F, 0xF0, 0x00}},
     32,
     {0x88FF0000, 0x0000FF00}},
    {"24 bit",
     {40, 3, 2, 24, 0, {}, {}, {255, 0, 0, 0, 255, 0, 0, 0, 255, 0, 0, 0,
                                1,   2, 3, 4, 5,   6, 7, 8, 9,   0, 0, 0}},
     24,
     {0xFF030201, 0xFF060504, 0xFF090807, B, G, R}},
    {"24 bit, OS/2 1", {12, 1, 1, 24, 0, {}, {}, {1, 2, 3, 0}}, 24, {0xFF030201}},
    {"32 bit", {40, 2, 1, 32, 0, {}, {}, {1, 2, 3, 0, 4, 5, 6, 128}}, 24, {0xFF030201, 0xFF060504}},
    {"32 bit fields",
     {40, 2, 1, 32, 3, {0xFF, 0xFF00, 0xFF0000}, {}, {1, 2, 3, 0, 4, 5, 6, 128}},
     24,
     {0xFF010203, 0xFF040506}},
    {"32 bit fields 10-10-10",
     {40, 2, 1, 32, 3, {0x3FF00000, 0xFFC00, 0x3FF}, {}, {0, 0, 0xF0, 0x3F, 0xFF, 3, 0, 0}},
     24,
     {R, B}},
    {"32 bit, alpha mask, V3",
     {56, 2, 1, 32, 3, {0xFF0000, 0xFF00, 0xFF, 0xFF000000}, {}, {1, 2, 3, 0, 4, 5, 6, 128}},
     32,
     {0x00030201, 0x80060504}},
    {"32 bit, alpha mask, V4",
     {108, 2, 1, 32, 3, {0xFF0000, 0xFF00, 0xFF, 0xFF000000}, {}, {1, 2, 3, 0, 4, 5, 6, 128}},
     32,
     {0x00030201, 0x80060504}},
    {"32 bit, alpha mask, V5",
     {124, 2, 1, 32, 3, {0xFF0000, 0xFF00, 0xFF, 0xFF000000}, {}, {1, 2, 3, 0, 4, 5, 6, 128}},
     32,
     {0x00030201, 0x80060504}},
    {"32 bit, no alpha mask, V5",
     {124, 2, 1, 32, 3, {0xFF0000, 0xFF00, 0xFF, 0}, {}, {1, 2, 3, 0, 4, 5, 6, 128}},
     24,
     {0xFF030201, 0xFF060504}},
    {"32 bit, alpha bit fields",
     {40, 1, 1, 32, 6, {0xFF0000, 0xFF00, 0xFF, 0xFF000000}, {}, {4, 5, 6, 128}},
     32,
     {0x80060504}},
    {"RLE8",
     {40, 4, 2, 8, 1, {}, Four, {4, 1, 0, 0, 0, 3, 1, 2, 3, 0, 1, 0, 0, 1}},
     24,
     {R, G, B, K, R, R, R, R}},
    {"RLE8, moves and early ends",
     {40, 4, 3, 8, 1, {}, Four, {1, 1, 0, 0, 0, 2, 1, 1, 2, 3, 0, 1}},
     24,
     {K, B, B, K, K, K, K, K, R, K, K, K}},
    {"RLE8, runs beyond the row", {40, 2, 2, 8, 1, {}, Four, {200, 1, 0, 0, 200, 2, 0, 1}}, 24, {G, G, R, R}},
    {"RLE4",
     {40, 5, 2, 4, 2, {}, Four, {5, 0x12, 0, 0, 0, 5, 0x12, 0x31, 0x20, 0, 0, 1}},
     24,
     {R, G, B, R, G, R, G, R, G, R}},
};

TEST(Bmp, ReadsEveryKind)
{
    for (const Case &expected : Cases) {
        const Seen seen = Read(VTGF_Read_BMP, Make(expected.bmp));
        EXPECT_EQ(seen.width, expected.bmp.width) << expected.name;
        EXPECT_EQ(seen.height, std::abs(expected.bmp.height)) << expected.name;
        EXPECT_EQ(seen.bitsPerPixel, expected.bitsPerPixel) << expected.name;
        EXPECT_EQ(seen.pixels, expected.pixels) << expected.name;
    }
}

TEST(Bmp, ReadsBrokenOffFilesAsFarAsTheyGo)
{
    for (const Case &whole : Cases) {
        SCOPED_TRACE(whole.name);
        if (std::abs(whole.bmp.height) > 1)
            ExpectReadsAsFarAsItGoes(VTGF_Read_BMP, Make(whole.bmp));
    }
}

TEST(Bmp, SurvivesDamage)
{
    for (const Case &whole : Cases)
        ExpectSurvivesDamage(VTGF_Read_BMP, Make(whole.bmp));
}

} // namespace
