// What the machine tells about itself.
#include "platform/memorystatus.h"
#include "platform/programfolder.h"
#include "support/table.h"
#include "support/tempfolder.h"

#include <pwd.h>
#include <unistd.h>

using namespace wb;

namespace
{

TEST(MemoryStatus, ReadsMemInfo)
{
    for (const TableRow &row : ReadTable("platform/memory.txt", 3)) {
        const MemoryStatus status = ParseMemoryInfo(row.Bytes(0));
        EXPECT_EQ(status.TotalBytes, row.Number(1)) << row.line;
        EXPECT_EQ(status.AvailableBytes, row.Number(2)) << row.line;
    }
    const MemoryStatus own = QueryMemoryStatus();
    EXPECT_GT(own.TotalBytes, 64 << 20);
    EXPECT_GT(own.AvailableBytes, 0);
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
    ::unsetenv("HOME");
    const passwd *user = ::getpwuid(::getuid());
    const std::string folder = user != nullptr ? user->pw_dir + std::string("/.config/workbench") : "";
    EXPECT_EQ(ToNativePath(UserConfigFolder()), folder);
    ::setenv("XDG_CONFIG_HOME", "/no-such/Настройки", 1);
    EXPECT_EQ(UserConfigFolder(), u"C:\\no-such\\Настройки\\workbench"_qs);
}

} // namespace
