#include "rastgl/picturefile.h"
#include "rastgl/rastgl.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

#include <sys/resource.h>

namespace
{

using namespace picturefile;
namespace fs = std::filesystem;

// A folder of its own for every test.
class Writing : public testing::Test
{
protected:
    void SetUp() override
    {
        fs::remove_all(m_folder);
        fs::create_directories(m_folder);
    }
    void TearDown() override { fs::remove_all(m_folder); }

    std::string Path(const char *name) const { return (m_folder / name).string(); }
    long FileCount() const
    {
        return std::distance(fs::directory_iterator(m_folder), fs::directory_iterator());
    }

    static File Load(const std::string &path)
    {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }

private:
    fs::path m_folder = fs::path(testing::TempDir()) / "rastgl-writing";
};

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

TEST_F(Writing, PngKeepsEveryPixelAndTheDepth)
{
    const std::string path = Path("picture.png");
    for (const unsigned grain : {0U, 0xFFU}) {
        const Numbers pixels = MakePixels(grain);
        const std::int32_t handle = Hold(Side, Side, pixels);
        ASSERT_EQ(VTGF_Write_PNG_File(path.c_str(), handle), 1);
        VTGF_DIB_Free(handle);
        EXPECT_EQ(Take(VTGF_Read_PNG_File(path.c_str())), (Seen{Side, Side, 32, pixels}));
    }

    const std::int32_t quality = 90;
    const std::int32_t handle = Hold(2, 1, {0xFF102030, 0xFF405060});
    ASSERT_EQ(VTGF_Write_JPEG_File(path.c_str(), handle, &quality), 1);
    VTGF_DIB_Free(handle);
    const File jpeg = Load(path);
    const auto length = std::int32_t(jpeg.size());
    const std::int32_t opaque = VTGF_Read_JPEG(jpeg.data(), &length);
    ASSERT_EQ(VTGF_Write_PNG_File(path.c_str(), opaque), 1);
    VTGF_DIB_Free(opaque);
    EXPECT_EQ(Take(VTGF_Read_PNG_File(path.c_str())), Read(VTGF_Read_JPEG, jpeg));
}

TEST_F(Writing, JpegComposesOverBlackInTheQualityAsked)
{
    const std::int32_t handle = Hold(Side, Side, Numbers(Side * Side, 0x80FF8000));
    const std::int32_t grainy = Hold(Side, Side, MakePixels(0xFF));
    const auto write = [this](std::int32_t picture, std::int32_t quality) {
        EXPECT_EQ(VTGF_Write_JPEG_File(Path("picture.jpg").c_str(), picture, &quality), 1);
        return Load(Path("picture.jpg"));
    };
    for (const std::int32_t quality : {50, 100}) {
        const Seen seen = Read(VTGF_Read_JPEG, write(handle, quality));
        ASSERT_EQ(seen.pixels.size(), std::size_t(Side * Side));
        for (const auto &[shift, expected] : {std::pair(16, 128), std::pair(8, 64), std::pair(0, 0)})
            EXPECT_NEAR(int(seen.pixels[Side * 70 + 70] >> shift & 0xFF), expected, 4) << quality;
    }
    EXPECT_EQ(write(grainy, 128), write(grainy, 100));
    EXPECT_EQ(write(grainy, -5), write(grainy, 0));
    EXPECT_LT(write(grainy, 40).size() * 2, write(grainy, 95).size());
    VTGF_DIB_Free(handle);
    VTGF_DIB_Free(grainy);
}

TEST_F(Writing, ReplacesFilesInPlace)
{
    const std::int32_t handle = Hold(1, 1, {0xFF010203});
    std::ofstream(Path("real.png")) << "old";
    fs::permissions(Path("real.png"), fs::perms::owner_read | fs::perms::owner_write);
    fs::create_symlink("real.png", Path("link.png"));
    EXPECT_EQ(VTGF_Write_PNG_File(Path("link.png").c_str(), handle), 1);
    VTGF_DIB_Free(handle);
    EXPECT_TRUE(fs::is_symlink(Path("link.png")));
    EXPECT_EQ(fs::status(Path("real.png")).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(Take(VTGF_Read_PNG_File(Path("real.png").c_str())).pixels, Numbers{0xFF010203});
    EXPECT_EQ(FileCount(), 2);
}

// Lets no file grow beyond a few bytes, as a full disk would.
class FullDisk
{
public:
    FullDisk() : m_formerHandler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_former);
        const rlimit tight{64, m_former.rlim_max};
        setrlimit(RLIMIT_FSIZE, &tight);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_former);
        (void)std::signal(SIGXFSZ, m_formerHandler);
    }
    FullDisk(const FullDisk &) = delete;
    FullDisk &operator=(const FullDisk &) = delete;

private:
    rlimit m_former{};
    void (*m_formerHandler)(int);
};

TEST_F(Writing, FailureCostsNothing)
{
    const std::int32_t handle = Hold(Side, Side, MakePixels(0xFF));
    const std::int32_t quality = 90;
    const std::string path = Path("kept.png");
    std::ofstream(path) << "old";
    {
        const FullDisk fullDisk;
        EXPECT_EQ(VTGF_Write_PNG_File(path.c_str(), handle), 0);
        EXPECT_EQ(VTGF_Write_JPEG_File(path.c_str(), handle, &quality), 0);
        EXPECT_EQ(VTGF_Write_PNG_File(Path("new.png").c_str(), handle), 0);
    }
    fs::create_directory(Path("folder"));
    EXPECT_EQ(VTGF_Write_PNG_File(Path("folder").c_str(), handle), 0);
    EXPECT_EQ(VTGF_Write_PNG_File(Path("no folder/new.png").c_str(), handle), 0);
    EXPECT_EQ(VTGF_Write_PNG_File("/dev/full", handle), 0);
    EXPECT_TRUE(fs::is_character_file("/dev/full"));
    VTGF_DIB_Free(handle);
    EXPECT_EQ(VTGF_Write_PNG_File(Path("new.png").c_str(), handle), 0);
    EXPECT_EQ(Load(path), (File{'o', 'l', 'd'}));
    EXPECT_EQ(FileCount(), 2);

    const std::int32_t wide = Hold(70000, 1, Numbers(70000));
    EXPECT_EQ(VTGF_Write_JPEG_File(Path("wide.jpg").c_str(), wide, &quality), 0)
        << "beyond what JPEG can hold";
    VTGF_DIB_Free(wide);
}

} // namespace
