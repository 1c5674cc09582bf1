#include "rastgl/picturefile.h"
#include "rastgl/rastgl.h"

#include <gtest/gtest.h>
#include <png.h>
#include <zlib.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>

namespace
{

using namespace picturefile;

struct Kind {
    int colourType;
    int depth;
    bool hasTransparency = false; // tRNS
    bool isInterlaced = false;
};

constexpr int Width = 13;
constexpr int Height = 11;

// The sample that the made files hold at a place.
unsigned Sample(const Kind &kind, int x, int y, int channel)
{
    const unsigned mixed = unsigned(x * 7919 + y * 104729 + channel * 1299709 + 17) * 2654435761U;
    return (mixed >> 8) & ((1U << kind.depth) - 1);
}

int Channels(const Kind &kind)
{
    constexpr std::array<int, 7> Counts = {1, 0, 3, 1, 2, 0, 4};
    return Counts[std::size_t(kind.colourType)];
}

std::uint32_t PaletteEntry(unsigned index)
{
    return index * 50 % 256 << 24 | index * 3 % 256 << 16 | (255 - index) << 8 | index * 7 % 256;
}
constexpr int TransparentEntries = 5;

void AddPalette(png_structp png, png_infop info, const Kind &kind)
{
    std::array<png_color, 256> palette;
    std::array<png_byte, TransparentEntries> alphas;
    for (unsigned index = 0; index < 256; ++index) {
        const std::uint32_t entry = PaletteEntry(index);
        palette[index] = {png_byte(entry >> 16), png_byte(entry >> 8), png_byte(entry)};
        if (index < TransparentEntries)
            alphas[index] = png_byte(entry >> 24);
    }
    png_set_PLTE(png, info, palette.data(), 1 << kind.depth);
    if (kind.hasTransparency)
        png_set_tRNS(png, info, alphas.data(), std::min(TransparentEntries, 1 << kind.depth), nullptr);
}

// The colour that tRNS makes transparent: the one at (2, 3).
void AddTransparentColour(png_structp png, png_infop info, const Kind &kind)
{
    png_color_16 colour{};
    colour.gray = colour.red = png_uint_16(Sample(kind, 2, 3, 0));
    colour.green = png_uint_16(Sample(kind, 2, 3, 1));
    colour.blue = png_uint_16(Sample(kind, 2, 3, 2));
    png_set_tRNS(png, info, nullptr, 0, &colour);
}

File Make(const Kind &kind)
{
    File file;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    const auto append = [](png_structp writer, png_bytep bytes, std::size_t count) {
        auto &target = *static_cast<File *>(png_get_io_ptr(writer));
        target.insert(target.end(), bytes, bytes + count);
    };
    png_set_write_fn(png, &file, append, nullptr);
    png_set_IHDR(png, info, Width, Height, kind.depth, kind.colourType, kind.isInterlaced ? 1 : 0, 0, 0);
    if (kind.colourType == PNG_COLOR_TYPE_PALETTE)
        AddPalette(png, info, kind);
    else if (kind.hasTransparency)
        AddTransparentColour(png, info, kind);
    png_write_info(png, info);
    png_set_packing(png);
    for (int row = 0, pass = 0; pass < png_set_interlace_handling(png); row = 0, ++pass) {
        for (; row < Height; ++row) {
            Maker samples;
            for (int at = 0; at < Width * Channels(kind); ++at)
                samples.Big(kind.depth == 16 ? 2 : 1,
                            Sample(kind, at / Channels(kind), row, at % Channels(kind)));
            png_write_row(png, samples.bytes.data());
        }
    }
    png_write_end(png, info);
    png_destroy_write_struct(&png, &info);
    return file;
}

std::uint32_t Expected(const Kind &kind, int x, int y)
{
    if (kind.colourType == PNG_COLOR_TYPE_PALETTE) {
        const unsigned index = Sample(kind, x, y, 0);
        const bool isOpaque = !kind.hasTransparency || index >= TransparentEntries;
        return PaletteEntry(index) | (isOpaque ? 0xFF000000 : 0);
    }
    const unsigned most = (1U << kind.depth) - 1;
    const bool isGrey = (kind.colourType & PNG_COLOR_MASK_COLOR) == 0;
    const int colours = isGrey ? 1 : 3;
    const auto channel = [&](int number) { return (Sample(kind, x, y, number) * 255 + most / 2) / most; };
    unsigned alpha = (kind.colourType & PNG_COLOR_MASK_ALPHA) != 0 ? channel(colours) : 255;
    if (kind.hasTransparency) {
        bool isTransparent = true;
        for (int number = 0; number < colours; ++number)
            isTransparent = isTransparent && Sample(kind, x, y, number) == Sample(kind, 2, 3, number);
        alpha = isTransparent ? 0 : 255;
    }
    return alpha << 24 | channel(0) << 16 | channel(isGrey ? 0 : 1) << 8 | channel(isGrey ? 0 : 2);
}

bool IsAllowed(const Kind &kind)
{
    const bool hasAlphaChannel = (kind.colourType & PNG_COLOR_MASK_ALPHA) != 0;
    return (kind.colourType == PNG_COLOR_TYPE_GRAY || kind.depth >= 8 ||
            kind.colourType == PNG_COLOR_TYPE_PALETTE) &&
           !(kind.colourType == PNG_COLOR_TYPE_PALETTE && kind.depth == 16) &&
           !(hasAlphaChannel && kind.hasTransparency);
}

void ExpectReadsKind(const Kind &kind)
{
    const bool hasAlpha = kind.hasTransparency || (kind.colourType & PNG_COLOR_MASK_ALPHA) != 0;
    Seen expected{Width, Height, hasAlpha ? 32 : 24, {}};
    for (int at = 0; at < Width * Height; ++at)
        expected.pixels.push_back(Expected(kind, at % Width, at / Width));
    EXPECT_EQ(Read(VTGF_Read_PNG, Make(kind)), expected)
        << "type " << kind.colourType << ", depth " << kind.depth << ", tRNS " << kind.hasTransparency
        << ", interlaced " << kind.isInterlaced;
}

TEST(Png, ReadsEveryKind)
{
    for (const int colourType : {0, 2, 3, 4, 6}) {
        for (const int depth : {1, 2, 4, 8, 16}) {
            for (const int more : {0, 1, 2, 3}) {
                const Kind kind{colourType, depth, more % 2 == 1, more >= 2};
                if (IsAllowed(kind))
                    ExpectReadsKind(kind);
            }
        }
    }
}

TEST(Png, ReadsBrokenOffFilesAsFarAsTheyGo)
{
    ExpectReadsAsFarAsItGoes(VTGF_Read_PNG, Make({PNG_COLOR_TYPE_RGBA, 8}));
    ExpectReadsAsFarAsItGoes(VTGF_Read_PNG, Make({PNG_COLOR_TYPE_RGB, 16}));
    ExpectReadsAsFarAsItGoes(VTGF_Read_PNG, Make({PNG_COLOR_TYPE_PALETTE, 8, true}));
}

// Makes the checksums of all chunks right again, as whoever builds a file to do harm would.
void Repair(File &file)
{
    for (std::size_t at = 8; at + 12 <= file.size();) {
        std::size_t length = 0;
        for (std::size_t byte = at; byte < at + 4; ++byte)
            length = length << 8 | file[byte];
        if (length > file.size() - at - 12)
            return;
        const File checksum = Maker().Big(4, std::uint32_t(crc32(0, &file[at + 4], uInt(length + 4)))).bytes;
        at += 12 + length;
        std::copy(checksum.begin(), checksum.end(), file.begin() + std::ptrdiff_t(at) - 4);
    }
}

TEST(Png, SurvivesDamage)
{
    ExpectSurvivesDamage(VTGF_Read_PNG, Make({PNG_COLOR_TYPE_PALETTE, 4, true, true}), Repair);
    ExpectSurvivesDamage(VTGF_Read_PNG, Make({PNG_COLOR_TYPE_RGBA, 16, false, true}), Repair);
    ExpectSurvivesDamage(VTGF_Read_PNG, Make({PNG_COLOR_TYPE_RGB, 8, true}));
}

TEST(Png, BelievesNoSizeThatTheFileCannotFill)
{
    File file = Make({PNG_COLOR_TYPE_RGBA, 8});
    const Maker size = Maker().Big(4, 16384).Big(4, 16384);
    std::copy(size.bytes.begin(), size.bytes.end(), file.begin() + 16);
    Repair(file);
    EXPECT_EQ(Read(VTGF_Read_PNG, file).width, 0);
}

TEST(Png, ReadsFiles)
{
    const std::string path = testing::TempDir() + "kind.png";
    const File file = Make({PNG_COLOR_TYPE_RGBA, 8});
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char *>(file.data()), long(file.size()));
    EXPECT_EQ(Take(VTGF_Read_PNG_File(path.c_str())), Read(VTGF_Read_PNG, file));
    std::filesystem::remove(path);
    EXPECT_EQ(VTGF_Read_PNG_File(path.c_str()), 0);
    EXPECT_EQ(VTGF_Read_PNG_File(testing::TempDir().c_str()), 0);
}

} // namespace
