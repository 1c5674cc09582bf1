#include "rastgl/picturefile.h"
#include "rastgl/rastgl.h"

#include <gtest/gtest.h>

namespace
{

using namespace picturefile;

struct Dds {
    std::uint32_t width;
    std::uint32_t height;
    std::uint32_t flags;
    const char *fourCc;
    std::uint32_t bits;
    std::vector<std::uint32_t> masks;
    File data;
};

File Make(const Dds &dds)
{
    Maker file;
    file.Text("DDS ")
        .Little(4, 124)
        .Little(4, 0x1007)
        .Little(4, dds.height)
        .Little(4, dds.width)
        .Zeros(14 * 4);
    file.Little(4, 32).Little(4, dds.flags).Text(dds.fourCc).Zeros(dds.fourCc[0] == 0 ? 4 : 0);
    file.Little(4, dds.bits);
    for (const std::uint32_t mask : dds.masks)
        file.Little(4, mask);
    return file.Zeros(128 - file.bytes.size()).Raw(dds.data).bytes;
}

constexpr std::uint32_t Alpha = 1;
constexpr std::uint32_t Code = 4;
constexpr std::uint32_t Colour = 0x40;
constexpr std::uint32_t Grey = 0x20000;

constexpr std::uint32_t R = 0xFFFF0000;
constexpr std::uint32_t G = 0xFF00FF00;
constexpr std::uint32_t B = 0xFF0000FF;

struct Case {
    const char *name;
    Dds dds;
    Seen seen;
};

// DXT1 blocks: red and blue ends, the rows 0, 1, 2 and 3 of one index each.
const File FourColours = {0x00, 0xF8, 0x1F, 0x00, 0x00, 0x55, 0xAA, 0xFF};
const File ThreeColours = {0x1F, 0x00, 0x00, 0xF8, 0x00, 0x55, 0xAA, 0xFF};

std::vector<std::uint32_t> Rows(int width, const std::vector<std::uint32_t> &colours)
{
    std::vector<std::uint32_t> pixels;
    for (const std::uint32_t colour : colours)
        pixels.insert(pixels.end(), std::size_t(width), colour);
    return pixels;
}

const std::vector<Case> &Cases()
{
    static const File dxt3 = Maker().Little(4, 0xFFFF0000).Little(4, 0x88881111).Raw(FourColours).bytes;
    static const std::vector<Case> cases = {
        {"32 bit",
         {2,
          2,
          Colour | Alpha,
          "",
          32,
          {0xFF0000, 0xFF00, 0xFF, 0xFF000000},
          {0, 0, 255, 255, 0, 255, 0, 128, 1, 2, 3, 4, 255, 0, 0, 0}},
         {2, 2, 32, {R, 0x8000FF00, 0x04030201, 0x000000FF}}},
        {"32 bit without alpha",
         {2, 1, Colour, "", 32, {0xFF, 0xFF00, 0xFF0000, 0xFF000000}, {255, 0, 0, 0, 1, 2, 3, 4}},
         {2, 1, 24, {R, 0xFF010203}}},
        {"24 bit",
         {1, 2, Colour, "", 24, {0xFF0000, 0xFF00, 0xFF}, {0, 255, 0, 255, 0, 0}},
         {1, 2, 24, {G, B}}},
        {"16 bit 5-6-5",
         {3, 1, Colour, "", 16, {0xF800, 0x7E0, 0x1F}, {0, 0xF8, 0xE0, 7, 0x1F, 0}},
         {3, 1, 24, {R, G, B}}},
        {"16 bit 1-5-5-5",
         {2, 1, Colour | Alpha, "", 16, {0x7C00, 0x3E0, 0x1F, 0x8000}, {0, 0xFC, 0x1F, 0}},
         {2, 1, 32, {R, 0x000000FF}}},
        {"grey", {2, 1, Grey, "", 8, {0xFF}, {7, 200}}, {2, 1, 24, {0xFF070707, 0xFFC8C8C8}}},
        {"grey and alpha",
         {1, 1, Grey | Alpha, "", 16, {0xFF, 0, 0, 0xFF00}, {7, 200}},
         {1, 1, 32, {0xC8070707}}},
        {"DXT1",
         {3, 6, Code, "DXT1", 0, {}, Maker().Raw(FourColours).Raw(FourColours).bytes},
         {3, 6, 24, Rows(3, {R, B, 0xFFAA0055, 0xFF5500AA, R, B})}},
        {"DXT1 with holes",
         {4, 4, Code, "DXT1", 0, {}, ThreeColours},
         {4, 4, 32, Rows(4, {B, R, 0xFF7F007F, 0})}},
        {"DXT3",
         {4, 4, Code, "DXT3", 0, {}, dxt3},
         {4, 4, 32, Rows(4, {0x00FF0000, 0xFF0000FF, 0x11AA0055, 0x885500AA})}},
    };
    return cases;
}

TEST(Dds, ReadsEveryKind)
{
    for (const Case &expected : Cases())
        EXPECT_EQ(Read(VTGF_Read_DDS, Make(expected.dds)), expected.seen) << expected.name;
}

TEST(Dds, ReadsTheAlphaRampOfDxt5)
{
    // 3-bit indexes 0, 1, 2 .. 7 twice; 0 and 1 name the ends, the others lie between.
    const File ramp = {255, 0, 0x88, 0xC6, 0xFA, 0x88, 0xC6, 0xFA};
    const Seen seen =
        Read(VTGF_Read_DDS, Make({4, 4, Code, "DXT5", 0, {}, Maker().Raw(ramp).Raw(FourColours).bytes}));
    ASSERT_EQ(seen.pixels.size(), 16U);
    EXPECT_EQ(seen.bitsPerPixel, 32);
    const std::vector<std::uint32_t> alphas = {255, 0, 218, 182, 145, 109, 72, 36};
    for (std::size_t at = 0; at < 16; ++at)
        EXPECT_NEAR(int(seen.pixels[at] >> 24), int(alphas[at % 8]), 1) << at;
}

TEST(Dds, ReadsBrokenOffAndDamagedFiles)
{
    for (const Case &whole : Cases()) {
        SCOPED_TRACE(whole.name);
        if (whole.seen.height == 2 || whole.seen.height == 6)
            ExpectReadsAsFarAsItGoes(VTGF_Read_DDS, Make(whole.dds));
        ExpectSurvivesDamage(VTGF_Read_DDS, Make(whole.dds));
    }
    const Dds huge = {16384, 16384, Code, "DXT1", 0, {}, FourColours};
    EXPECT_EQ(Read(VTGF_Read_DDS, Make(huge)).width, 0);
}

} // namespace
