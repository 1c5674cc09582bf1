#include "common/files.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>
#include <unistd.h>

using namespace wb;

namespace
{

TEST(Files, ReadAndWriteWholeFiles)
{
    const TempFolder folder;
    folder.Put("Старый.gi", "a longer older file");
    ASSERT_TRUE(WriteFileBytes(folder.Path(u"СТАРЫЙ.GI"_qs), BytesOf("new")));
    EXPECT_EQ(folder.Get("Старый.gi"), "new");
    EXPECT_EQ(folder.EntryCount(), 1U);
    ByteArray bytes;
    EXPECT_EQ(ReadFileBytes(folder.Path(u"старый.gi"_qs), bytes), 3);
    EXPECT_EQ(std::string(bytes.begin(), bytes.end()), "new");
    EXPECT_EQ(ReadFileBytes(folder.Path(u"none"_qs), bytes), 0);
    EXPECT_TRUE(bytes.empty());

    // One byte above what a length can tell; the file is all hole.
    folder.Put("huge");
    ASSERT_EQ(::truncate(folder.Native("huge").c_str(), 0x80000000LL), 0);
    EXPECT_EQ(ReadFileBytes(folder.Path(u"huge"_qs), bytes), 0);
    EXPECT_FALSE(WriteFileBytes(folder.Path(u"huge\\x"_qs), BytesOf("x")));
    EXPECT_FALSE(WriteFileBytes(folder.Path(u"a*.gi"_qs), BytesOf("x")));
}

TEST(Files, ExistAndAreDeleted)
{
    const TempFolder folder;
    folder.Put("a");
    folder.Put("b?");
    folder.MakeFolder(".dir");
    EXPECT_TRUE(FileExists(folder.Path(u"A"_qs)));
    EXPECT_TRUE(FileExists(folder.Path(u"b\xF03F"_qs)));
    EXPECT_TRUE(FolderExists(folder.Path(u".dir"_qs)));
    for (const QString &none :
         {QString(), folder.Path(u".dir"_qs), folder.Path(u"b?"_qs), folder.Path(u"*"_qs)})
        EXPECT_FALSE(FileExists(none)) << none.toStdString();
    EXPECT_TRUE(DeleteFile(folder.Path(u"A"_qs)));
    EXPECT_TRUE(DeleteFile(folder.Path(u"A"_qs))) << "is gone anyway";
    EXPECT_TRUE(DeleteFile(folder.Path(u".dir"_qs))) << "is no file";
    EXPECT_EQ(folder.EntryCount(), 2U);
}

TEST(Files, MakePathMakesEveryLevel)
{
    const TempFolder folder;
    folder.Put("file");
    folder.MakeFolder("Есть");
    EXPECT_TRUE(MakePath(folder.Path(u"есть\\b\\c"_qs)));
    EXPECT_TRUE(MakePath(folder.Path(u"есть\\b\\c\\"_qs)));
    EXPECT_TRUE(FolderExists(folder.Path(u"Есть\\b\\c"_qs)));
    EXPECT_FALSE(MakePath(folder.Path(u"new\\a?\\c"_qs)));
    EXPECT_TRUE(FolderExists(folder.Path(u"new"_qs)));
    EXPECT_FALSE(MakePath(folder.Path(u"file\\x"_qs)));
    EXPECT_FALSE(MakePath(folder.Path(u"file"_qs)));
    EXPECT_TRUE(MakePath(u"C:\\"_qs));
    EXPECT_TRUE(MakePath(u"C:"_qs));

    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder.Native());
    EXPECT_TRUE(MakePath(u"relative\\x"_qs));
    std::filesystem::current_path(before);
    EXPECT_TRUE(FolderExists(folder.Path(u"relative\\x"_qs)));
}

} // namespace
