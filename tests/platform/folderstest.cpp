// Listing folders and noticing their changes.
#include "platform/folderscan.h"
#include "platform/folderwatch.h"
#include "support/tempfolder.h"

#include <algorithm>
#include <gmock/gmock.h>

using namespace wb;

namespace
{

std::vector<std::string> ScannedNames(const TempFolder &folder)
{
    std::vector<FolderEntry> entries;
    EXPECT_EQ(ScanFolder(folder.Native(), entries), FileError::None);
    std::vector<std::string> names;
    for (const FolderEntry &entry : entries)
        names.emplace_back(entry.Kind == EntryKind::Folder ? "+" : "").append(ToNativeName(entry.Name));
    return names;
}

TEST(FolderScan, SortsByUpperCase)
{
    const std::vector<std::string> orders[] = {
        {".hidden", "a", "a-long-name.1", "A-LONG-NAME.2", "a1", "B", "b", "z", "_", "ё", "Я", "\xFF"},
        {"Frame_0000", "frame_00002.gh", "FRAME_00002.GI", "frame_00002.gi", "frame_00010.gi",
         "frame_00010.gi1", "frame_00010.gi2"}};
    for (const auto &sorted : orders) {
        const TempFolder folder;
        std::for_each(sorted.rbegin(), sorted.rend(), [&](const auto &name) { folder.Put(name); });
        EXPECT_EQ(ScannedNames(folder), sorted);
    }
}

TEST(FolderScan, FollowsLinksAndLeavesOutPipes)
{
    const TempFolder folder;
    folder.MakeFolder("Dir");
    folder.Put("file");
    folder.MakePipe("pipe");
    for (const auto &[target, link] : {std::pair("Dir", "dlink"), {"file", "flink"}, {"none", "broken"}})
        std::filesystem::create_symlink(target, folder.Native(link));
    EXPECT_THAT(ScannedNames(folder), testing::ElementsAre("+Dir", "+dlink", "file", "flink"));
}

TEST(FolderWatch, NoticesNamesComingAndGoing)
{
    const TempFolder folder;
    folder.MakeFolder("top/sub");
    FolderWatch watch;
    EXPECT_TRUE(watch.MayHaveChanged()) << "nothing is watched";
    watch.Watch(folder.Native("top"));
    const auto noticed = [&watch] { return watch.MayHaveChanged() && !watch.MayHaveChanged(); };
    EXPECT_FALSE(watch.MayHaveChanged());
    folder.Put("top/a");
    EXPECT_TRUE(noticed());
    folder.Put("top/sub/a");
    EXPECT_FALSE(watch.MayHaveChanged()) << "below the folder";
    std::filesystem::rename(folder.Native("top/a"), folder.Native("top/b"));
    EXPECT_TRUE(noticed());
    std::filesystem::remove(folder.Native("top/b"));
    EXPECT_TRUE(noticed());
    watch.Watch("/proc");
    EXPECT_TRUE(watch.MayHaveChanged()) << "changes there come from elsewhere";
}

TEST(FolderWatch, OutlivesTheFolderItself)
{
    const TempFolder folder;
    folder.MakeFolder("top/sub");
    FolderWatch watch;
    watch.Watch(folder.Native("top/sub"));
    const auto noticed = [&watch] { return watch.MayHaveChanged() && !watch.MayHaveChanged(); };
    std::filesystem::rename(folder.Native("top"), folder.Native("away"));
    EXPECT_TRUE(watch.MayHaveChanged()) << "its parent has another name";
    EXPECT_TRUE(watch.MayHaveChanged()) << "there is nothing to watch";
    folder.MakeFolder("top/sub");
    EXPECT_TRUE(noticed());
    std::filesystem::rename(folder.Native("top"), folder.Native("too"));
    folder.MakeFolder("top/sub");
    EXPECT_TRUE(noticed()) << "another folder has its path";
    std::filesystem::remove(folder.Native("top/sub"));
    folder.MakeFolder("top/sub"); // often with the same inode
    EXPECT_TRUE(watch.MayHaveChanged());
    folder.Put("top/sub/a");
    EXPECT_TRUE(watch.MayHaveChanged()) << "the new folder is watched";
}

} // namespace
