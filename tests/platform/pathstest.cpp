// Paths of the program and of the machine, and which mounts are drives.
#include "platform/linux/mounts.h"
#include "platform/nativepath.h"
#include "support/table.h"
#include "support/tempfolder.h"

#include <functional>
#include <map>

using namespace wb;

namespace
{

TEST(NativePath, GoesBothWaysAndTakesWhatPeopleWrite)
{
    const std::map<std::string, std::function<std::string(const QString &)>> ways = {
        {"to native", ToNativePath},
        {"from native",
         [](const QString &native) { return FromNativePath(native.toStdString()).toStdString(); }},
        {"user text", [](const QString &text) { return PathFromUserText(text).toStdString(); }}};
    for (const TableRow &row : ReadTable("platform/paths.txt", 3))
        EXPECT_EQ(ways.at(row.Bytes(0))(row.Text(1)), row.Bytes(2)) << row.line;
    const std::string below = std::filesystem::current_path().string() + "/no-such";
    EXPECT_EQ(FromNativePath("no-such"), FromNativePath(below));
    EXPECT_EQ(ToNativePath(u"no-such"_qs), below);
    for (const char *bytes : {"/a\\b*?:Ё", "\xFF\xD4.gi", "\xEF\x80\xBF"})
        EXPECT_EQ(ToNativeText(FromNativeText(bytes)), bytes);
    EXPECT_EQ(FromNativeText("a\\*?:\xFF"), u"a\\*?:\xF0FF"_qs);
    const std::string above = std::filesystem::current_path().parent_path().string() + "/no-such";
    EXPECT_EQ(ToNativePath(u"x\\..\\..\\no-such"_qs), above);
}

TEST(NativePath, LooksUpIgnoringCase)
{
    const TempFolder folder;
    folder.MakeFolder("Данные/Sub");
    for (const char *name : {"Данные/Sub/Ёж.GI", "two.gi", "TWO.GI", "\xD4.gi"})
        folder.Put(name);
    for (const TableRow &row : ReadTable("platform/lookups.txt", 2))
        EXPECT_EQ(ToNativePath(folder.Path(row.Text(0))), folder.Native(row.Bytes(1)));
}

TEST(Drives, AreWhatAPersonWouldCallSoUpToZ)
{
    // What is asked of the machine, told from the names.
    const MountQuestions questions = {
        [](const Mount &mount) { return mount.Device.starts_with("8:1"); },
        [](const Mount &mount) { return !mount.MountPoint.ends_with(".txt"); },
        [](const Mount &mount) { return mount.Source == "/dev/sdb1" ? u"СТИК"_qs : QString(); }};
    const auto mounts = ParseMountInfo(ReadFixture("platform/mountinfo.txt"));
    const DriveTable drives = DrivesFromMounts(mounts, questions, {});
    const std::vector<TableRow> expected = ReadTable("platform/drives.txt", 4);
    ASSERT_EQ(drives.size(), expected.size());
    for (std::size_t index = 0; index < drives.size(); ++index) {
        EXPECT_EQ(std::string(1, drives[index].Letter), expected[index].Bytes(0));
        EXPECT_EQ(drives[index].Type, expected[index].Int(1)) << drives[index].MountPoint;
        EXPECT_EQ(drives[index].Label, expected[index].Text(2)) << drives[index].MountPoint;
        EXPECT_EQ(drives[index].MountPoint, expected[index].Bytes(3));
    }

    // The first one goes, leaving its letter to one that had none, and comes again; all others keep theirs.
    auto now = mounts;
    std::erase_if(now, [](const Mount &mount) { return mount.MountPoint == "/cdrom"; });
    DriveTable later = drives;
    for (int round = 0; round < 2; ++round, now = mounts) {
        later = DrivesFromMounts(now, questions, later);
        ASSERT_EQ(later.size(), drives.size());
        EXPECT_EQ(later[1].MountPoint, "/run/media/v/19");
        for (std::size_t index = 0; index < drives.size(); ++index)
            EXPECT_TRUE(index == 1 || later[index].MountPoint == drives[index].MountPoint) << index;
    }

    // While there are letters that nobody had, that of a gone drive waits for it.
    std::erase_if(now, [&](const Mount &mount) { return mount.MountPoint != drives[2].MountPoint; });
    EXPECT_EQ(DrivesFromMounts(now, questions, {drives[1]}).back().Letter, 'E');
}

TEST(Drives, OfThisMachineTranslateBothWays)
{
    const DriveTable drives = ListDrives();
    EXPECT_EQ(drives.at(0).MountPoint, "/");
    for (const Drive &drive : drives) {
        const QString inside = QLatin1Char(drive.Letter) + u":\\no-such"_qs;
        const std::string native = (drive.MountPoint == "/" ? "" : drive.MountPoint) + "/no-such";
        EXPECT_EQ(ToNativePath(inside), native);
        EXPECT_EQ(FromNativePath(native), inside);
    }
}

} // namespace
