#include "common/files.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

using namespace wb;

namespace
{

TEST(Files, ReadAndWriteWholeFiles)
{
    const TempFolder folder;
    folder.Put("Старый.gi", "a longer older file");
    ASSERT_TRUE(WriteFileBytes(folder.Path(u"СТАРЫЙ.GI"_qs), BytesOf("new")));
    EXPECT_EQ(folder.EntryCount(), 1U);
    ByteArray bytes;
    EXPECT_EQ(ReadFileBytes(folder.Path(u"старый.gi"_qs), bytes), 3);
    EXPECT_EQ(TextOf(bytes), "new");

    // One byte above what a length can tell; the file is all hole.
    folder.Put("huge");
    std::filesystem::resize_file(folder.Native("huge"), 0x80000000LL);
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
    EXPECT_TRUE(FileExists(folder.Path(u"b\xF03F"_qs)));
    EXPECT_TRUE(FolderExists(folder.Path(u".dir"_qs)));
    for (const QString &none : {u".dir"_qs, u"b?"_qs, u"*"_qs})
        EXPECT_FALSE(FileExists(folder.Path(none))) << none.toStdString();
    for (const QString &gone : {u"A"_qs, u"a"_qs, u".dir"_qs}) // the last one is no file
        EXPECT_TRUE(DeleteFile(folder.Path(gone))) << gone.toStdString();
    EXPECT_EQ(folder.EntryCount(), 2U);
}

TEST(Files, MakePathMakesEveryLevel)
{
    const TempFolder folder;
    folder.Put("file");
    folder.MakeFolder("Есть");
    for (const QString &path : {u"есть\\b\\c"_qs, u"есть\\b\\c\\"_qs})
        EXPECT_TRUE(MakePath(folder.Path(path)));
    EXPECT_TRUE(FolderExists(folder.Path(u"Есть\\b\\c"_qs)));
    for (const QString &path : {u"new\\a?\\c"_qs, u"file\\x"_qs, u"file"_qs})
        EXPECT_FALSE(MakePath(folder.Path(path))) << path.toStdString();
    EXPECT_TRUE(FolderExists(folder.Path(u"new"_qs)));
    EXPECT_TRUE(MakePath(u"C:\\"_qs));

    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder.Native());
    EXPECT_TRUE(MakePath(u"relative\\x"_qs));
    std::filesystem::current_path(before);
    EXPECT_TRUE(FolderExists(folder.Path(u"relative\\x"_qs)));
}

} // namespace
