// Listing folders and noticing their changes.
#include "platform/folderscan.h"
#include "platform/folderwatch.h"
#include "support/tempfolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace wb;
using testing::ElementsAre;

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

TEST(FolderScan, SortsByUpperCaseAndFollowsLinks)
{
    const TempFolder folder;
    for (const char *name : {"b", "a", "B", "_", "Я", "ё", "z", "\xFF", ".hidden", "a1"})
        folder.Put(name);
    folder.MakeFolder("Dir");
    ASSERT_EQ(::symlink("Dir", folder.Native("dlink").c_str()), 0);
    ASSERT_EQ(::symlink("a", folder.Native("flink").c_str()), 0);
    ASSERT_EQ(::symlink("none", folder.Native("broken").c_str()), 0);
    ASSERT_EQ(::mkfifo(folder.Native("pipe").c_str(), 0600), 0);
    EXPECT_THAT(ScannedNames(folder), ElementsAre(".hidden", "a", "a1", "B", "b", "+Dir", "+dlink", "flink",
                                                  "z", "_", "ё", "Я", "\xFF"));
}

TEST(FolderScan, SortsNamesThatBeginAlike)
{
    const TempFolder folder;
    for (const char *name : {"frame_00010.gi", "FRAME_00002.GI", "frame_00002.gi", "Frame_0000",
                             "frame_00010.gi2", "frame_00002.gh"})
        folder.Put(name);
    EXPECT_THAT(ScannedNames(folder), ElementsAre("Frame_0000", "frame_00002.gh", "FRAME_00002.GI",
                                                  "frame_00002.gi", "frame_00010.gi", "frame_00010.gi2"));
}

TEST(FolderScan, TellsWhyItFails)
{
    const TempFolder folder;
    folder.Put("a");
    std::vector<FolderEntry> entries(3);
    EXPECT_EQ(ScanFolder(folder.Native("none"), entries), FileError::PathNotFound);
    EXPECT_TRUE(entries.empty());
    EXPECT_EQ(ScanFolder(folder.Native("a"), entries), FileError::PathNotFound);
    EXPECT_EQ(ScanFolder("", entries), FileError::PathNotFound);
    EXPECT_EQ(ScanFolder(folder.Native(), entries), FileError::None);
    EXPECT_EQ(entries.size(), 1U);
}

TEST(FolderWatch, NoticesNamesComingAndGoing)
{
    const TempFolder folder;
    folder.MakeFolder("top/sub");
    FolderWatch watch;
    EXPECT_TRUE(watch.MayHaveChanged()) << "nothing is watched";
    watch.Watch(folder.Native("top"));
    EXPECT_FALSE(watch.MayHaveChanged());
    const auto noticed = [&watch] { return watch.MayHaveChanged() && !watch.MayHaveChanged(); };
    folder.Put("top/a");
    EXPECT_TRUE(noticed());
    folder.Put("top/sub/a");
    EXPECT_FALSE(watch.MayHaveChanged()) << "below the folder";
    std::filesystem::rename(folder.Native("top/a"), folder.Native("top/b"));
    EXPECT_TRUE(noticed());
    std::filesystem::remove(folder.Native("top/b"));
    EXPECT_TRUE(noticed());
}

TEST(FolderWatch, OutlivesTheFolderItself)
{
    const TempFolder folder;
    folder.MakeFolder("top/sub");
    FolderWatch watch;
    watch.Watch(folder.Native("top/sub"));
    std::filesystem::rename(folder.Native("top"), folder.Native("away"));
    EXPECT_TRUE(watch.MayHaveChanged()) << "its parent has another name";
    EXPECT_TRUE(watch.MayHaveChanged()) << "there is nothing to watch";
    folder.MakeFolder("top/sub");
    EXPECT_TRUE(watch.MayHaveChanged());
    EXPECT_FALSE(watch.MayHaveChanged());
    std::filesystem::rename(folder.Native("top"), folder.Native("too"));
    folder.MakeFolder("top/sub");
    EXPECT_TRUE(watch.MayHaveChanged()) << "another folder has its path";
    EXPECT_FALSE(watch.MayHaveChanged());
    std::filesystem::remove(folder.Native("top/sub"));
    folder.MakeFolder("top/sub"); // often with the same inode
    EXPECT_TRUE(watch.MayHaveChanged());
    folder.Put("top/sub/a");
    EXPECT_TRUE(watch.MayHaveChanged()) << "the new folder is watched";
    watch.Watch("/proc");
    EXPECT_TRUE(watch.MayHaveChanged()) << "changes there come from elsewhere";
}

} // namespace
