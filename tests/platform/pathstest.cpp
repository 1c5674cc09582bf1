// Paths of the program and of the machine, and which mounts are drives.
#include "platform/linux/mounts.h"
#include "platform/nativepath.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>
#include <unistd.h>

using namespace wb;

namespace
{

TEST(NativePath, GoesBothWays)
{
    const std::pair<QString, std::string> cases[] = {{u"C:\\"_qs, "/"},
                                                     {u"C:\\no-such\\Файл.gi"_qs, "/no-such/Файл.gi"},
                                                     {u"C:\\no-such\\a\xF03A"
                                                      u"b"_qs,
                                                      "/no-such/a:b"}};
    for (const auto &[path, native] : cases) {
        EXPECT_EQ(ToNativePath(path), native);
        EXPECT_EQ(FromNativePath(native), path);
    }
    EXPECT_EQ(FromNativePath("/no-such//./x/../a/"), u"C:\\no-such\\a"_qs);
    EXPECT_EQ(FromNativePath("/.."), u"C:\\"_qs);
    EXPECT_EQ(FromNativePath(""), QString());
    EXPECT_EQ(FromNativePath("no-such-file"),
              FromNativePath(std::filesystem::current_path().string() + "/no-such-file"));
    EXPECT_EQ(ToNativePath(u"c:no-such"_qs), "/no-such");
    EXPECT_EQ(ToNativePath(u"\\no-such"_qs), "/no-such");
    EXPECT_EQ(ToNativePath(u"C:/no-such\\..\\..\\..\\no-such/a"_qs), "/no-such/a");
    EXPECT_EQ(ToNativePath(u"no-such"_qs), std::filesystem::current_path().string() + "/no-such");
    for (const QString &none : {u""_qs, u"Я:\\a"_qs, u"C:\\*.gi"_qs, u"C:\\a?"_qs, u"C:\\a:b"_qs, u"::"_qs})
        EXPECT_EQ(ToNativePath(none), "") << none.toStdString();
}

TEST(NativePath, TakesWhatPeopleWrite)
{
    for (const QString &text : {u"/no such/я"_qs, u"file:///no%20such/%D1%8F"_qs,
                                u"FILE://localhost/no such/я"_qs, u"C:\\no such\\я"_qs, u"C:/no such/я"_qs})
        EXPECT_EQ(PathFromUserText(text), u"C:\\no such\\я"_qs) << text.toStdString();
    EXPECT_EQ(PathFromUserText(u"file:///no-such/%FF"_qs), u"C:\\no-such\\\xF0FF"_qs);
    EXPECT_EQ(PathFromUserText(u"/no-such/a\\b:c"_qs), u"C:\\no-such\\a\xF05C"
                                                       u"b\xF03A"
                                                       u"c"_qs);
    EXPECT_EQ(PathFromUserText(u"data/a.gi"_qs), u"data\\a.gi"_qs);
    EXPECT_EQ(PathFromUserText(u""_qs), QString());
}

TEST(NativePath, LooksUpIgnoringCase)
{
    const TempFolder folder;
    folder.MakeFolder("Данные/Sub");
    folder.Put("Данные/Sub/Ёж.GI");
    folder.Put("two.gi");
    folder.Put("TWO.GI");
    folder.Put("\xD4.gi");
    const auto native = [&](const QString &name) { return ToNativePath(folder.Path(name)); };
    EXPECT_EQ(native(u"ДАННЫЕ\\sub\\ёЖ.gi"_qs), folder.Native("Данные/Sub/Ёж.GI"));
    EXPECT_EQ(native(u"two.gi"_qs), folder.Native("two.gi"));
    EXPECT_EQ(native(u"Two.Gi"_qs), folder.Native("TWO.GI")) << "the first in byte order";
    EXPECT_EQ(native(u"данные\\New\\Sub"_qs), folder.Native("Данные/New/Sub")) << "new names stay as written";
    EXPECT_EQ(native(u"TWO.gi\\x"_qs), folder.Native("TWO.GI/x"));
    EXPECT_EQ(native(u"\xF0D4.GI"_qs), folder.Native("\xD4.gi"));
}

// Mounts as a desktop has them; the questions are answered from the names.
DriveTable Drives(std::string_view text)
{
    const MountQuestions questions = {
        [](const Mount &mount) { return mount.Device.starts_with("8:1"); },
        [](const Mount &mount) { return !mount.MountPoint.ends_with(".txt"); },
        [](const Mount &mount) { return mount.Source == "/dev/sdb1" ? u"СТИК"_qs : QString(); }};
    return DrivesFromMounts(ParseMountInfo(text), questions);
}

TEST(Drives, AreWhatAPersonWouldCallSo)
{
    const DriveTable drives = Drives(R"(22 27 0:21 / /proc rw - proc proc rw
27 1 254:0 / / rw,relatime shared:1 - ext4 /dev/vda rw
28 27 254:1 / /home rw - ext4 /dev/vdb rw
29 27 0:30 / /run/user/1000/gvfs rw - fuse.gvfsd-fuse gvfsd-fuse rw
30 27 0:31 / /tmp rw - tmpfs tmpfs rw
31 27 7:0 / /snap/core/1 ro - squashfs /dev/loop0 ro
32 27 8:17 / /run/media/u/USB\040Stick rw shared:5 master:2 - vfat /dev/sdb1 rw
33 27 11:0 / /cdrom ro - iso9660 /dev/sr0 ro
34 27 0:40 / /home/u/far rw - fuse.sshfs u@far:/ rw
35 27 0:41 / /ramdisk rw - tmpfs none rw
36 27 254:2 / /mnt/disk rw - ext4 /dev/old rw
37 27 254:3 / /mnt/disk ro - udf /dev/vdc ro
38 27 254:3 /a.txt /mnt/a.txt rw - xfs /dev/vdc rw
39 27 8:18 / /boot/efi rw - vfat /dev/sdb2 rw
40 27 0:42 / /mediathek rw - ext4 /dev/vdd rw
41 27 broken
42 27 0:43 / relative rw - ext4 /dev/vde rw
43 27 0:44 / /mnt/short rw - ext4)");
    const Drive expected[] = {{'C', DriveFixed, {}, "/"},
                              {'D', DriveOptical, {}, "/cdrom"},
                              {'E', DriveNetwork, {}, "/home/u/far"},
                              {'F', DriveOptical, {}, "/mnt/disk"},
                              {'G', DriveRam, {}, "/ramdisk"},
                              {'H', DriveRemovable, u"СТИК"_qs, "/run/media/u/USB Stick"}};
    ASSERT_EQ(drives.size(), std::size(expected));
    for (std::size_t index = 0; index < drives.size(); ++index) {
        EXPECT_EQ(drives[index].Letter, expected[index].Letter);
        EXPECT_EQ(drives[index].Type, expected[index].Type) << drives[index].MountPoint;
        EXPECT_EQ(drives[index].Label, expected[index].Label) << drives[index].MountPoint;
        EXPECT_EQ(drives[index].MountPoint, expected[index].MountPoint);
    }
}

TEST(Drives, StopAtZ)
{
    std::string text;
    for (int index = 100; index < 140; ++index)
        text += "1 1 0:1 / /mnt/" + std::to_string(index) + " rw - ext4 none rw\n";
    const DriveTable drives = Drives(text);
    ASSERT_EQ(drives.size(), 24U);
    EXPECT_EQ(drives.back().Letter, 'Z');
    EXPECT_EQ(drives.back().MountPoint, "/mnt/122");
    EXPECT_EQ(Drives("").size(), 1U);
}

TEST(Drives, OfThisMachineTranslateBothWays)
{
    const DriveTable drives = ListDrives();
    ASSERT_FALSE(drives.empty());
    EXPECT_EQ(drives[0].MountPoint, "/");
    for (const Drive &drive : drives) {
        const QString root = QLatin1Char(drive.Letter) + u":\\"_qs;
        EXPECT_EQ(ToNativePath(root), drive.MountPoint);
        EXPECT_EQ(FromNativePath(drive.MountPoint), root);
        const std::string inside = drive.MountPoint == "/" ? "/no-such" : drive.MountPoint + "/no-such";
        EXPECT_EQ(FromNativePath(inside), root + u"no-such"_qs);
    }
}

} // namespace
