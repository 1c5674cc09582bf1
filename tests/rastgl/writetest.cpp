#include "rastgl/canvas.h"
#include "rastgl/picturefile.h"
#include "rastgl/rastgl.h"
#include "support/fulldisk.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace
{

using namespace picturefile;
namespace fs = std::filesystem;

constexpr int Side = 150;

class Writing : public testing::Test
{
protected:
    bool WritePng(std::string_view name, std::int32_t handle) const
    {
        return VTGF_Write_PNG_File(folder.Native(name).c_str(), handle) == 1;
    }
    bool WriteJpeg(std::string_view name, std::int32_t handle, std::int32_t quality = 90) const
    {
        return VTGF_Write_JPEG_File(folder.Native(name).c_str(), handle, &quality) == 1;
    }
    std::int32_t ReadPng(std::string_view name) const
    {
        return VTGF_Read_PNG_File(folder.Native(name).c_str());
    }

    wb::TempFolder folder;
    const Numbers noise = Noise(Side, Side, 5).colours;
    const std::int32_t grainy = Hold(Side, Side, noise);
};

TEST_F(Writing, PngKeepsEveryPixelAndTheDepth)
{
    const auto slope = [](int x, int y) { return unsigned(x + y) << 24 | unsigned(x) << 16 | unsigned(y); };
    std::vector<std::int32_t> handles = {grainy, Hold(Side, Side, Paint(Side, Side, slope).colours)};
    for (const Case &sample : LoadCases("bmp.txt")) {
        const auto length = std::int32_t(sample.file.size());
        if (sample.seen.width > 0)
            handles.push_back(VTGF_Read_BMP(sample.file.data(), &length));
    }
    for (const std::int32_t handle : handles) {
        ASSERT_TRUE(WritePng("picture.png", handle));
        EXPECT_EQ(Take(ReadPng("picture.png")), Take(handle));
    }
}

TEST_F(Writing, JpegComposesOverBlackInTheQualityAsked)
{
    const auto write = [this](std::int32_t picture, std::int32_t quality) {
        EXPECT_TRUE(WriteJpeg("picture.jpg", picture, quality));
        const std::string bytes = folder.Get("picture.jpg");
        return File(bytes.begin(), bytes.end());
    };
    const std::int32_t flat = Hold(16, 16, Numbers(256, 0x80FF8000));
    for (const std::int32_t quality : {50, 100}) {
        const Seen seen = Read(VTGF_Read_JPEG, write(flat, quality));
        ASSERT_EQ(seen.pixels.size(), 256U);
        EXPECT_TRUE(AreClose(seen.pixels[100], 0xFF804000, 4)) << quality;
    }
    EXPECT_EQ(write(grainy, 128), write(grainy, 100));
    EXPECT_EQ(write(grainy, -5), write(grainy, 0));
    EXPECT_LT(write(grainy, 40).size() * 2, write(grainy, 95).size());
}

TEST_F(Writing, ReplacesFilesInPlace)
{
    constexpr auto Permissions = fs::perms::owner_read | fs::perms::owner_write;
    const std::string real = std::string(251, 'r') + ".png"; // as long as a name can be
    folder.Put(real, "old");
    fs::permissions(folder.Native(real), Permissions);
    fs::create_symlink(real, folder.Native("link.png"));
    EXPECT_TRUE(WritePng("link.png", grainy));
    EXPECT_TRUE(fs::is_symlink(folder.Native("link.png")));
    EXPECT_EQ(fs::status(folder.Native(real)).permissions(), Permissions);
    EXPECT_EQ(Take(ReadPng(real)).pixels, noise);
    EXPECT_EQ(folder.EntryCount(), 2U);
}

TEST_F(Writing, FailureCostsNothing)
{
    folder.Put("kept.png", "old");
    folder.MakeFolder("folder");
    wb::OnAFullDisk(64, [this] {
        EXPECT_FALSE(WritePng("kept.png", grainy));
        EXPECT_FALSE(WriteJpeg("kept.png", grainy));
        EXPECT_FALSE(WritePng("new.png", grainy));
    });
    EXPECT_FALSE(WritePng("folder", grainy));
    EXPECT_FALSE(WritePng("no folder/new.png", grainy));
    EXPECT_FALSE(WritePng("new.png", 0)) << "no picture";
    EXPECT_EQ(VTGF_Write_PNG_File("/dev/full", grainy), 0);
    EXPECT_TRUE(fs::is_character_file("/dev/full"));
    EXPECT_FALSE(WriteJpeg("new.jpg", Hold(70000, 1, Numbers(70000)))) << "beyond what JPEG can hold";
    EXPECT_EQ(folder.Get("kept.png"), "old");
    EXPECT_EQ(folder.EntryCount(), 2U);
    for (const char *name : {"new.png", "folder", "kept.png"})
        EXPECT_EQ(ReadPng(name), 0) << name;
}

} // namespace
