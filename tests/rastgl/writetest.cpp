#include "rastgl/picturefile.h"
#include "rastgl/rastgl.h"
#include "support/filesizelimit.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

#include <random>

namespace
{

using namespace picturefile;
namespace fs = std::filesystem;

constexpr int Side = 150;

// Smooth or, with much grain, as good as random.
Numbers MakePixels(unsigned grain)
{
    std::mt19937 random(5);
    Numbers pixels;
    for (unsigned at = 0; at < Side * Side; ++at) {
        const unsigned value = at % Side + (random() & grain);
        pixels.push_back((at & 0xFFU) << 24 | (value & 0xFF) << 16 | at / Side << 8 | (value & 0x7F));
    }
    return pixels;
}

class Writing : public testing::Test
{
protected:
    ~Writing() override { VTGF_DIB_Free(grainy); }

    bool WritePng(std::string_view name, std::int32_t handle) const
    {
        return VTGF_Write_PNG_File(folder.Native(name).c_str(), handle) == 1;
    }
    bool WriteJpeg(std::string_view name, std::int32_t handle, std::int32_t quality) const
    {
        return VTGF_Write_JPEG_File(folder.Native(name).c_str(), handle, &quality) == 1;
    }
    std::int32_t ReadPng(std::string_view name) const
    {
        return VTGF_Read_PNG_File(folder.Native(name).c_str());
    }

    wb::TempFolder folder;
    std::int32_t grainy = Hold(Side, Side, MakePixels(0xFF));
};

TEST_F(Writing, PngKeepsEveryPixelAndTheDepth)
{
    std::vector<std::int32_t> handles = {Hold(Side, Side, MakePixels(0)), Hold(Side, Side, MakePixels(0xFF))};
    for (const Case &sample : LoadCases("bmp.txt")) {
        const auto length = std::int32_t(sample.file.size());
        handles.push_back(VTGF_Read_BMP(sample.file.data(), &length));
    }
    for (const std::int32_t handle : handles) {
        ASSERT_TRUE(WritePng("picture.png", handle));
        EXPECT_EQ(Take(ReadPng("picture.png")), Take(handle));
    }
}

TEST_F(Writing, JpegComposesOverBlackInTheQualityAsked)
{
    const std::int32_t flat = Hold(Side, Side, Numbers(Side * Side, 0x80FF8000));
    const auto write = [this](std::int32_t picture, std::int32_t quality) {
        EXPECT_TRUE(WriteJpeg("picture.jpg", picture, quality));
        const std::string bytes = folder.Get("picture.jpg");
        return File(bytes.begin(), bytes.end());
    };
    for (const std::int32_t quality : {50, 100}) {
        const Seen seen = Read(VTGF_Read_JPEG, write(flat, quality));
        ASSERT_EQ(seen.pixels.size(), std::size_t(Side * Side));
        for (const auto &[shift, expected] : {std::pair(16, 128), std::pair(8, 64), std::pair(0, 0)})
            EXPECT_NEAR(int(seen.pixels[Side * 70 + 70] >> shift & 0xFF), expected, 4) << quality;
    }
    VTGF_DIB_Free(flat);
    EXPECT_EQ(write(grainy, 128), write(grainy, 100));
    EXPECT_EQ(write(grainy, -5), write(grainy, 0));
    EXPECT_LT(write(grainy, 40).size() * 2, write(grainy, 95).size());
}

TEST_F(Writing, ReplacesFilesInPlace)
{
    constexpr auto Permissions = fs::perms::owner_read | fs::perms::owner_write;
    folder.Put("real.png", "old");
    fs::permissions(folder.Native("real.png"), Permissions);
    fs::create_symlink("real.png", folder.Native("link.png"));
    EXPECT_TRUE(WritePng("link.png", grainy));
    EXPECT_TRUE(fs::is_symlink(folder.Native("link.png")));
    EXPECT_EQ(fs::status(folder.Native("real.png")).permissions(), Permissions);
    EXPECT_EQ(Take(ReadPng("real.png")).pixels, MakePixels(0xFF));
    EXPECT_EQ(folder.EntryCount(), 2U);
}

TEST_F(Writing, FailureCostsNothing)
{
    folder.Put("kept.png", "old");
    folder.MakeFolder("folder");
    {
        const wb::FileSizeLimit fullDisk(64);
        EXPECT_FALSE(WritePng("kept.png", grainy));
        EXPECT_FALSE(WriteJpeg("kept.png", grainy, 90));
        EXPECT_FALSE(WritePng("new.png", grainy));
    }
    EXPECT_FALSE(WritePng("folder", grainy));
    EXPECT_FALSE(WritePng("no folder/new.png", grainy));
    EXPECT_FALSE(WritePng("new.png", 0)) << "no picture";
    EXPECT_EQ(VTGF_Write_PNG_File("/dev/full", grainy), 0);
    EXPECT_TRUE(fs::is_character_file("/dev/full"));
    const std::int32_t wide = Hold(70000, 1, Numbers(70000));
    EXPECT_FALSE(WriteJpeg("new.jpg", wide, 90)) << "beyond what JPEG can hold";
    VTGF_DIB_Free(wide);
    EXPECT_EQ(folder.Get("kept.png"), "old");
    EXPECT_EQ(folder.EntryCount(), 2U);
    for (const char *name : {"new.png", "folder", "kept.png"})
        EXPECT_EQ(ReadPng(name), 0) << name;
}

} // namespace
