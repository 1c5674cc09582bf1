#include "rastgl/picturefile.h"
#include "rastgl/rastgl.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <chrono>
#include <cstdlib>
#include <tuple>

namespace
{

using namespace picturefile;

// Makes the checksums of all chunks of a PNG right again, as whoever builds a file to do harm would.
void RepairPng(File &file)
{
    const auto number = [&file](std::size_t at) {
        return std::size_t(file[at]) << 24 | file[at + 1] << 16 | file[at + 2] << 8 | file[at + 3];
    };
    for (std::size_t at = 8; at + 12 <= file.size() && number(at) <= file.size() - at - 12;) {
        const std::size_t end = at + 8 + number(at);
        const uLong checksum = crc32(0, &file[at + 4], uInt(end - at - 4));
        for (std::size_t byte = 0; byte < 4; ++byte)
            file[end + byte] = std::uint8_t(checksum >> (24 - 8 * byte));
        at = end + 4;
    }
}

TEST(Readers, ReadEveryKindAlsoBrokenOffAndDamaged)
{
    const std::tuple<const char *, Reader, void (*)(File &)> formats[] = {
        {"bmp.txt", VTGF_Read_BMP, nullptr},
        {"dds.txt", VTGF_Read_DDS, nullptr},
        {"png.txt", VTGF_Read_PNG, RepairPng},
        {"psd.txt", VTGF_Read_PSD, nullptr},
    };
    for (const auto &[cases, reader, repair] : formats)
        for (const Case &each : LoadCases(cases)) {
            SCOPED_TRACE(std::string(cases) + ": " + each.name);
            EXPECT_EQ(Read(reader, each.file), each.seen);
            if (each.seen.height > 1)
                ExpectReadsAsFarAsItGoes(reader, each.file);
            if (each.seen.height > 0)
                ExpectSurvivesDamage(reader, each.file, repair);
        }
}

TEST(Jpeg, ReadsEveryKindAlsoBrokenOffAndDamaged)
{
    for (const auto &[name, file, halves] : LoadCases("jpeg.txt")) {
        SCOPED_TRACE(name);
        const Seen whole = Read(VTGF_Read_JPEG, file);
        ASSERT_EQ((Seen{whole.width, whole.height, whole.bitsPerPixel, halves.pixels}), halves);
        const Seen part = Read(VTGF_Read_JPEG, File(file.begin(), file.end() - 8));
        ASSERT_EQ(part.pixels.size(), whole.pixels.size());
        for (int at = 0; at < whole.width * whole.height; ++at) {
            const int column = at % whole.width, middle = whole.width / 2;
            const std::uint32_t pixel = whole.pixels[std::size_t(at)];
            // Subsampled chroma mixes where the halves meet.
            if (std::abs(column - middle) > 2) {
                ASSERT_TRUE(AreClose(pixel, halves.pixels[column < middle ? 0 : 1], 3)) << at;
            }
            // Cut off in its last bytes, it shows the upper blocks, of a progressive file more coarsely.
            if (at < whole.width * 8) {
                ASSERT_TRUE(AreClose(pixel, part.pixels[std::size_t(at)], 8)) << at;
            }
        }
        ExpectSurvivesDamage(VTGF_Read_JPEG, file);
    }
}

// As many scans as would take half a minute to read.
TEST(Jpeg, StopsAtScansWithoutEnd)
{
    const std::vector<Case> parts = LoadCases("jpegscans.txt");
    ASSERT_EQ(parts.size(), 2U);
    File file = parts[0].file;
    for (int repeat = 0; repeat < 100000; ++repeat)
        file.insert(file.end(), parts[1].file.begin(), parts[1].file.end());
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(Read(VTGF_Read_JPEG, file).width, parts[0].seen.width);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

} // namespace
