// Reading and writing files: above all, that an older file outlives a failed write.
#include "platform/fileio.h"
#include "platform/folderscan.h"
#include "support/fulldisk.h"
#include "support/table.h"
#include "support/tempfolder.h"

#include <functional>
#include <grp.h>
#include <map>
#include <unistd.h>

using namespace wb;

namespace
{

TEST(FileIo, RefusalsTellWhyAndChangeNothing)
{
    ByteArray bytes;
    std::vector<FolderEntry> entries;
    const std::map<std::string, std::function<FileError(const std::string &)>> operations = {
        {"read", [&](const std::string &path) { return ReadWholeFile(path, bytes, 5); }},
        {"write", [](const std::string &path) { return WriteWholeFile(path, BytesOf("x")); }},
        {"list", [&](const std::string &path) { return ScanFolder(path, entries); }},
        {"make", MakeFolder},
        {"remove", RemoveFile}};
    const TempFolder folder;
    folder.Put("old", "older");
    folder.Put("limit", "123456");
    folder.MakeFolder("sub");
    folder.MakePipe("pipe");
    for (const TableRow &row : ReadTable("platform/refusals.txt", 3)) {
        bytes.assign(3, 0);
        entries.resize(3);
        const std::string &name = row.Bytes(1);
        const std::string path = name.empty() || name[0] == '/' ? name : folder.Native(name);
        EXPECT_EQ(int(operations.at(row.Bytes(0))(path)), row.Int(2)) << row.line;
        EXPECT_EQ(bytes.empty(), row.Bytes(0) == "read") << row.line;
        EXPECT_EQ(entries.empty(), row.Bytes(0) == "list") << row.line;
    }
    for (const char *device : {"/dev/full", "/dev/zero"})
        EXPECT_TRUE(std::filesystem::is_character_file(device));
    EXPECT_EQ(folder.EntryCount(), 4U);
    EXPECT_EQ(ReadWholeFile(folder.Native("old"), bytes, 5), FileError::None);
    EXPECT_EQ(TextOf(bytes), "older");
}

TEST(FileIo, FailedWritesLeaveWhatWas)
{
    const TempFolder folder;
    folder.Put("old", "old");
    const std::string big(1 << 20, 'x');
    OnAFullDisk(1000, [&] {
        for (const char *name : {"old", "new"}) {
            EXPECT_EQ(WriteWholeFile(folder.Native(name), BytesOf(big)), FileError::AccessError);
            OutputFile file;
            ASSERT_EQ(file.Open(folder.Native(name)), FileError::None);
            file.Write(BytesOf(big));
            EXPECT_EQ(file.Commit(), FileError::AccessError) << "tells the failed write again";
        }
    });
    {
        OutputFile abandoned;
        ASSERT_EQ(abandoned.Open(folder.Native("old")), FileError::None);
        ASSERT_EQ(abandoned.Write(BytesOf("half")), FileError::None);
        ASSERT_EQ(abandoned.Open(folder.Native("other")), FileError::None);
    }
    EXPECT_EQ(folder.Get("old"), "old");
    EXPECT_EQ(folder.EntryCount(), 1U);
}

TEST(FileIo, ReadsAtAnyOffset)
{
    const TempFolder folder;
    folder.Put("a", "0123456789");
    InputFile first;
    ASSERT_EQ(first.Open(folder.Native("a")), FileError::None);
    InputFile file = std::move(first);
    EXPECT_EQ(file.Size(), 10);
    const auto read = [&file](std::int64_t offset) {
        ByteArray bytes(4);
        bytes.resize(file.ReadAt(offset, bytes));
        return TextOf(bytes);
    };
    EXPECT_EQ(read(3), "3456");
    EXPECT_EQ(read(8), "89");
    EXPECT_EQ(read(10) + read(-1), "");
    file.Close();
    EXPECT_EQ(read(0), "");
}

TEST(FileIo, ReplacesKeepingModeAndLinks)
{
    const TempFolder folder;
    folder.Put("a", "a much longer older file");
    std::filesystem::permissions(folder.Native("a"), std::filesystem::perms(0640));
    std::filesystem::create_symlink("a", folder.Native("link"));
    OutputFile file;
    ASSERT_EQ(file.Open(folder.Native("link")), FileError::None);
    file.Write(BytesOf("head"));
    file.Write(BytesOf("tail"));
    file.WriteAt(2, BytesOf("AD"));
    file.Write(BytesOf("!"));
    EXPECT_EQ(folder.Get("a"), "a much longer older file") << "until it is complete";
    EXPECT_EQ(file.Commit(), FileError::None);
    EXPECT_EQ(folder.Get("a"), "heADtail!");
    EXPECT_TRUE(std::filesystem::is_symlink(folder.Native("link")));
    EXPECT_EQ(std::filesystem::status(folder.Native("a")).permissions(), std::filesystem::perms(0640));
    EXPECT_EQ(folder.EntryCount(), 2U) << "no temporary stays";
    EXPECT_NE(file.Write(BytesOf("late")), FileError::None);
    EXPECT_NE(OutputFile().Commit(), FileError::None) << "nothing was opened";
}

// Two users who share a folder by a group of theirs.
TEST(FileIo, ReplacesAnothersFileKeepingItsGroup)
{
    if (::geteuid() != 0)
        GTEST_SKIP() << "only the superuser can be both";
    constexpr gid_t shared = 40'002;
    const TempFolder folder;
    folder.Put("theirs", "old");
    for (const std::string &path : {folder.Native(), folder.Native("theirs")})
        if (::chown(path.c_str(), 40'000, shared) != 0 || ::chmod(path.c_str(), 0770) != 0)
            GTEST_SKIP() << "there are no other users here";
    ASSERT_TRUE(::setgroups(1, &shared) == 0 && ::setegid(40'001) == 0 && ::seteuid(40'001) == 0);
    const bool isWithinReach = GetFileFacts(folder.Native("theirs")).Exists;
    const FileError error = WriteWholeFile(folder.Native("theirs"), BytesOf("new"));
    ASSERT_TRUE(::seteuid(0) == 0 && ::setegid(0) == 0 && ::setgroups(0, nullptr) == 0);
    if (!isWithinReach)
        GTEST_SKIP() << "the temporary folder is private";
    EXPECT_EQ(error, FileError::None);
    EXPECT_EQ(folder.Get("theirs"), "new");
    struct stat facts = {};
    ASSERT_EQ(::stat(folder.Native("theirs").c_str(), &facts), 0);
    EXPECT_EQ(facts.st_gid, shared);
    EXPECT_EQ(facts.st_mode & 0777, 0770U);
}

TEST(FileIo, TellsFactsAndMakesAndRemoves)
{
    const TempFolder folder;
    ASSERT_EQ(WriteWholeFile(folder.Native("file"), BytesOf("123")), FileError::None);
    EXPECT_EQ(MakeFolder(folder.Native("sub")), FileError::None);
    EXPECT_EQ(MakeFolder(folder.Native("sub")), FileError::None);
    const FileFacts file = GetFileFacts(folder.Native("file"));
    EXPECT_TRUE(file.Exists && !file.IsFolder && file.Size == 3);
    const FileFacts sub = GetFileFacts(folder.Native("sub"));
    EXPECT_TRUE(sub.Exists && sub.IsFolder && sub.Size == 0);
    EXPECT_FALSE(GetFileFacts(folder.Native("none")).Exists);
    EXPECT_TRUE(CanWriteFolder(folder.Native()));
    std::filesystem::permissions(folder.Native("file"), std::filesystem::perms(0777));
    EXPECT_FALSE(CanWriteFolder(folder.Native("file")));
    EXPECT_EQ(RemoveFile(folder.Native("file")), FileError::None);
    EXPECT_EQ(folder.EntryCount(), 1U);
}

} // namespace
