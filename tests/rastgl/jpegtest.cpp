#include "rastgl/picturefile.h"
#include "rastgl/rastgl.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>

#include <jpeglib.h>

namespace
{

using namespace picturefile;

struct Kind {
    const char *name;
    J_COLOR_SPACE given;
    J_COLOR_SPACE stored;
    bool isProgressive;
    bool hasAdobeMarker;
    File left; // one pixel as it is given
    File right;
    std::uint32_t seenLeft;
    std::uint32_t seenRight;
};

constexpr int Side = 48;

// Two flat halves side by side.
File Make(const Kind &kind)
{
    jpeg_compress_struct info;
    jpeg_error_mgr errors;
    info.err = jpeg_std_error(&errors);
    jpeg_create_compress(&info);
    unsigned char *memory = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&info, &memory, &size);
    info.image_width = info.image_height = Side;
    info.input_components = int(kind.left.size());
    info.in_color_space = kind.given;
    jpeg_set_defaults(&info);
    jpeg_set_colorspace(&info, kind.stored);
    jpeg_set_quality(&info, 100, TRUE);
    info.write_Adobe_marker = kind.hasAdobeMarker ? TRUE : FALSE;
    info.write_JFIF_header = FALSE;
    if (kind.isProgressive)
        jpeg_simple_progression(&info);
    jpeg_start_compress(&info, TRUE);
    Maker row;
    for (int x = 0; x < Side; ++x)
        row.Raw(x < Side / 2 ? kind.left : kind.right);
    JSAMPROW pointer = row.bytes.data();
    while (info.next_scanline < info.image_height)
        jpeg_write_scanlines(&info, &pointer, 1);
    jpeg_finish_compress(&info);
    jpeg_destroy_compress(&info);
    File file(memory, memory + size);
    std::free(memory);
    return file;
}

constexpr std::uint32_t Brown = 0xFFC86432;
constexpr std::uint32_t Dark = 0xFF0A141E;
constexpr std::uint32_t Pink = 0xFFFF00FF;
constexpr std::uint32_t Grey = 0xFF646464;

const std::vector<Kind> Kinds = {
    {"grey", JCS_GRAYSCALE, JCS_GRAYSCALE, false, false, {100}, {0}, Grey, 0xFF000000},
    {"YCC", JCS_RGB, JCS_YCbCr, false, false, {200, 100, 50}, {10, 20, 30}, Brown, Dark},
    {"progressive", JCS_RGB, JCS_YCbCr, true, false, {200, 100, 50}, {10, 20, 30}, Brown, Dark},
    {"RGB", JCS_RGB, JCS_RGB, false, true, {200, 100, 50}, {10, 20, 30}, Brown, Dark},
    {"CMYK", JCS_CMYK, JCS_CMYK, false, false, {0, 255, 0, 0}, {0, 0, 0, 155}, Pink, Grey},
    {"CMYK, Adobe", JCS_CMYK, JCS_CMYK, false, true, {255, 0, 255, 255}, {255, 255, 255, 100}, Pink, Grey},
    {"YCCK, Adobe", JCS_CMYK, JCS_YCCK, false, true, {255, 0, 255, 255}, {255, 255, 255, 100}, Pink, Grey},
};

// The largest difference in one channel.
int Distance(std::uint32_t one, std::uint32_t other)
{
    int most = 0;
    for (int shift = 0; shift < 32; shift += 8)
        most = std::max(most, std::abs(int(one >> shift & 0xFF) - int(other >> shift & 0xFF)));
    return most;
}

TEST(Jpeg, ReadsEveryKind)
{
    for (const Kind &kind : Kinds) {
        const Seen seen = Read(VTGF_Read_JPEG, Make(kind));
        ASSERT_EQ((Seen{seen.width, seen.height, seen.bitsPerPixel, {}}), (Seen{Side, Side, 24, {}}));
        int most = 0;
        for (int at = 0; at < Side * Side; ++at) {
            const std::uint32_t expected = at % Side < Side / 2 ? kind.seenLeft : kind.seenRight;
            // Subsampled chroma mixes where the halves meet.
            if (std::abs(at % Side - Side / 2) > 2)
                most = std::max(most, Distance(seen.pixels[std::size_t(at)], expected));
        }
        EXPECT_LE(most, 3) << kind.name;
    }
}

TEST(Jpeg, ReadsBrokenOffAndDamagedFiles)
{
    for (const Kind &kind : Kinds) {
        File file = Make(kind);
        ExpectSurvivesDamage(VTGF_Read_JPEG, file);
        const Seen whole = Read(VTGF_Read_JPEG, file);
        file.resize(file.size() - 8);
        const Seen part = Read(VTGF_Read_JPEG, file);
        ASSERT_EQ(part.pixels.size(), whole.pixels.size()) << kind.name;
        for (std::size_t at = 0; at < Side * 8; ++at)
            ASSERT_LE(Distance(part.pixels[at], whole.pixels[at]), kind.isProgressive ? 8 : 0) << kind.name;
    }
}

// Repeats the last scan of a progressive file until reading them all would take half a minute.
TEST(Jpeg, StopsAtScansWithoutEnd)
{
    File file = Make(Kinds[2]);
    file.resize(file.size() - 2);
    const File marker = {0xFF, 0xDA};
    const auto scan = std::find_end(file.begin(), file.end(), marker.begin(), marker.end());
    const File lastScan(scan, file.end());
    const File size = {2048 >> 8, 0, 2048 >> 8, 0};
    const File frame = {0xFF, 0xC2};
    std::copy(size.begin(), size.end(),
              std::search(file.begin(), file.end(), frame.begin(), frame.end()) + 5);
    for (int repeat = 0; repeat < 100000; ++repeat)
        file.insert(file.end(), lastScan.begin(), lastScan.end());
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(Read(VTGF_Read_JPEG, file).width, 2048);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

} // namespace
