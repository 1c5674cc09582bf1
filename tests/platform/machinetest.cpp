// What the machine tells about itself.
#include "platform/memorystatus.h"
#include "platform/programfolder.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

using namespace wb;

namespace
{

TEST(MemoryStatus, ReadsMemInfo)
{
    const struct {
        const char *Text;
        std::int64_t Total;
        std::int64_t Available;
    } cases[] = {
        {"MemTotal:       8388608 kB\nMemFree:  1 kB\nMemAvailable:   4194304 kB\n", 1LL << 33, 1LL << 32},
        {"MemTotal: 100 kB\nMemFree: 10 kB\nBuffers: 5 kB\nSwapCached: 7 kB\nCached: 20 kB\n", 102400, 35840},
        {"MemTotal: 100 kB\nMemAvailable: 200 kB\n", 102400, 102400},
        {"MemTotal: 9999999999999999999 kB\nMemAvailable: -3 kB\n", 0, 0},
        {"MemTotal:", 0, 0},
        {"", 0, 0}};
    for (const auto &one : cases) {
        const MemoryStatus status = ParseMemoryInfo(one.Text);
        EXPECT_EQ(status.TotalBytes, one.Total) << one.Text;
        EXPECT_EQ(status.AvailableBytes, one.Available) << one.Text;
    }
    const MemoryStatus own = QueryMemoryStatus();
    EXPECT_GT(own.TotalBytes, 64 << 20);
    EXPECT_GT(own.AvailableBytes, 0);
    EXPECT_LE(own.AvailableBytes, own.TotalBytes);
}

TEST(ProgramFolder, HoldsThisProgram)
{
    EXPECT_TRUE(std::filesystem::exists(NativeProgramFolder() + "/test_platform"));
    EXPECT_EQ(ToNativePath(ProgramFolder()), NativeProgramFolder());
}

TEST(ProgramFolder, SettingsFollowTheEnvironment)
{
    ::setenv("HOME", "/no-such", 1);
    ::setenv("XDG_CONFIG_HOME", "relative", 1);
    EXPECT_EQ(UserConfigFolder(), u"C:\\no-such\\.config\\workbench"_qs);
    ::setenv("XDG_CONFIG_HOME", "/no-such/Настройки", 1);
    EXPECT_EQ(UserConfigFolder(), u"C:\\no-such\\Настройки\\workbench"_qs);
}

} // namespace
