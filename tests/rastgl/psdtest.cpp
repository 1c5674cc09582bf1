#include "rastgl/picturefile.h"
#include "rastgl/rastgl.h"

#include <gtest/gtest.h>

namespace
{

using namespace picturefile;

enum Mode { Bitmap = 0, GreyMode = 1, Indexed = 2, Rgb = 3, Cmyk = 4, Lab = 9 };

struct Psd {
    int channels;
    std::uint32_t width;
    std::uint32_t height;
    int depth;
    Mode mode;
    std::vector<File> rows; // of all channels, one after the other
    File palette;
    File layers;
};

// A row as literal bytes where they differ and a run where not.
File PackRow(const File &row)
{
    Maker packed;
    packed.Big(1, 0x80); // does nothing
    for (std::size_t at = 0; at < row.size();) {
        std::size_t run = 1;
        while (at + run < row.size() && row[at + run] == row[at])
            ++run;
        if (run > 1)
            packed.Big(1, std::uint32_t(257 - run)).Big(1, row[at]);
        else
            packed.Big(1, 0).Big(1, row[at]);
        at += run;
    }
    return packed.bytes;
}

File Make(const Psd &psd, bool isPacked)
{
    Maker file;
    file.Text("8BPS")
        .Big(2, 1)
        .Zeros(6)
        .Big(2, std::uint32_t(psd.channels))
        .Big(4, psd.height)
        .Big(4, psd.width);
    file.Big(2, std::uint32_t(psd.depth)).Big(2, psd.mode);
    file.Big(4, std::uint32_t(psd.palette.size())).Raw(psd.palette);
    file.Big(4, 3).Text("res");
    file.Big(4, std::uint32_t(psd.layers.size())).Raw(psd.layers);
    file.Big(2, isPacked ? 1 : 0);
    for (const File &row : psd.rows) {
        if (isPacked)
            file.Big(2, std::uint32_t(PackRow(row).size()));
    }
    for (const File &row : psd.rows)
        file.Raw(isPacked ? PackRow(row) : row);
    return file.bytes;
}

struct Case {
    const char *name;
    Psd psd;
    Seen seen;
};

File MakePalette()
{
    File palette(768);
    palette[1] = 255;       // entry 1 is red,
    palette[256 + 2] = 255; // 2 green
    palette[512 + 3] = 255; // and 3 blue
    return palette;
}

const File MergedAlpha = {0, 0, 0, 2, 0xFF, 0xFF};
const File OpaqueLayers = {0, 0, 0, 2, 0, 1};

const std::vector<Case> &Cases()
{
    static const File deepLayers = Maker()
                                       .Zeros(8)
                                       .Text("8BIM")
                                       .Text("Patt")
                                       .Big(4, 3)
                                       .Zeros(4)
                                       .Text("8BIM")
                                       .Text("Lr16")
                                       .Big(4, 2)
                                       .Big(2, 0xFFFF)
                                       .bytes;
    static const std::vector<Case> cases = {
        {"bitmap",
         {1, 10, 2, 1, Bitmap, {{0x80, 0x40}, {0x01, 0x00}}, {}, {}},
         {10, 2, 24, {0xFF000000, ~0U, ~0U, ~0U, ~0U, ~0U, ~0U, ~0U,        ~0U, 0xFF000000,
                      ~0U,        ~0U, ~0U, ~0U, ~0U, ~0U, ~0U, 0xFF000000, ~0U, ~0U}}},
        {"grey",
         {1, 3, 2, 8, GreyMode, {{1, 2, 2}, {3, 3, 3}}, {}, {}},
         {3, 2, 24, {0xFF010101, 0xFF020202, 0xFF020202, 0xFF030303, 0xFF030303, 0xFF030303}}},
        {"grey, 16 bit, alpha",
         {2, 2, 1, 16, GreyMode, {{0x80, 0x80, 0, 127}, {0x01, 0x02, 0xFF, 0xFF}}, {}, {}},
         {2, 1, 32, {0x01808080, 0xFF000000}}},
        {"indexed",
         {1, 4, 1, 8, Indexed, {{1, 2, 3, 0}}, MakePalette(), {}},
         {4, 1, 24, {0xFFFF0000, 0xFF00FF00, 0xFF0000FF, 0xFF000000}}},
        {"colours",
         {3, 2, 2, 8, Rgb, {{1, 2}, {3, 4}, {11, 12}, {13, 14}, {21, 22}, {23, 24}}, {}, OpaqueLayers},
         {2, 2, 24, {0xFF010B15, 0xFF020C16, 0xFF030D17, 0xFF040E18}}},
        {"colours, 16 bit",
         {3, 1, 1, 16, Rgb, {{0x10, 0x10}, {0xFF, 0xFF}, {0x00, 0x81}}, {}, {}},
         {1, 1, 24, {0xFF10FF01}}},
        {"a single extra channel",
         {4, 2, 1, 8, Rgb, {{1, 2}, {3, 4}, {5, 6}, {0, 128}}, {}, {}},
         {2, 1, 32, {0x00010305, 0x80020406}}},
        {"several extra channels",
         {5, 1, 1, 8, Rgb, {{1}, {3}, {5}, {0}, {0}}, {}, {}},
         {1, 1, 24, {0xFF010305}}},
        {"merged alpha over white",
         {5,
          3,
          1,
          8,
          Rgb,
          {{127, 255, 9}, {200, 255, 9}, {255, 255, 9}, {128, 0, 255}, {0, 0, 0}},
          {},
          MergedAlpha},
         {3, 1, 32, {0x800091FF, 0, 0xFF090909}}},
        {"merged alpha, 16 bit",
         {4, 1, 1, 16, Rgb, {{127, 127}, {255, 255}, {255, 255}, {128, 128}}, {}, deepLayers},
         {1, 1, 32, {0x8000FFFF}}},
        {"inks",
         {4, 3, 1, 8, Cmyk, {{255, 0, 100}, {255, 255, 100}, {255, 255, 100}, {255, 255, 128}}, {}, {}},
         {3, 1, 24, {0xFFFFFFFF, 0xFF00FFFF, 0xFF323232}}},
    };
    return cases;
}

TEST(Psd, ReadsEveryKind)
{
    for (const Case &expected : Cases()) {
        EXPECT_EQ(Read(VTGF_Read_PSD, Make(expected.psd, false)), expected.seen) << expected.name << ", raw";
        EXPECT_EQ(Read(VTGF_Read_PSD, Make(expected.psd, true)), expected.seen)
            << expected.name << ", packed";
    }
}

TEST(Psd, RefusesWhatItCannotShow)
{
    EXPECT_EQ(Read(VTGF_Read_PSD, Make({3, 1, 1, 8, Lab, {{1}, {2}, {3}}, {}, {}}, false)).width, 0);
    EXPECT_EQ(Read(VTGF_Read_PSD, Make({3, 1, 1, 32, Rgb, {File(12)}, {}, {}}, false)).width, 0);
    EXPECT_EQ(Read(VTGF_Read_PSD, Make({2, 1, 1, 8, Rgb, {{1}, {2}}, {}, {}}, false)).width, 0);
    EXPECT_EQ(Read(VTGF_Read_PSD, Make({1, 1, 1, 8, Indexed, {{1}}, {}, {}}, false)).width, 0);
    EXPECT_EQ(Read(VTGF_Read_PSD, Make({3, 16384, 16384, 8, Rgb, {{1}}, {}, {}}, false)).width, 0);
}

TEST(Psd, ReadsBrokenOffAndDamagedFiles)
{
    for (const Case &whole : Cases()) {
        SCOPED_TRACE(whole.name);
        for (const bool isPacked : {false, true}) {
            const File file = Make(whole.psd, isPacked);
            if (whole.seen.height == 2)
                ExpectReadsAsFarAsItGoes(VTGF_Read_PSD, file);
            ExpectSurvivesDamage(VTGF_Read_PSD, file);
        }
    }
}

} // namespace
