// Reading and writing files: above all, that an older file outlives a failed write.
#include "platform/fileio.h"
#include "support/tempfolder.h"

#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace wb;

namespace
{

// Lets files grow to `bytes` only, as a full disk would.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        m_handler = ::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit = {bytes, m_before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    FileSizeLimit(const FileSizeLimit &) = delete;
    FileSizeLimit &operator=(const FileSizeLimit &) = delete;
    ~FileSizeLimit()
    {
        ::setrlimit(RLIMIT_FSIZE, &m_before);
        ::signal(SIGXFSZ, m_handler);
    }

private:
    rlimit m_before = {};
    void (*m_handler)(int) = nullptr;
};

TEST(FileIo, ReadsWholeFilesOnly)
{
    const TempFolder folder;
    folder.Put("a", "hello");
    folder.Put("empty", "");
    folder.MakeFolder("sub");
    ASSERT_EQ(::mkfifo(folder.Native("pipe").c_str(), 0600), 0);
    const struct {
        std::string Path;
        std::int64_t Limit;
        FileError Error;
        std::string Bytes;
    } cases[] = {{folder.Native("a"), 5, FileError::None, "hello"},
                 {folder.Native("a"), 4, FileError::AccessError, ""},
                 {folder.Native("empty"), 5, FileError::None, ""},
                 {folder.Native("sub"), 5, FileError::AccessError, ""},
                 {folder.Native("pipe"), 5, FileError::AccessError, ""},
                 {folder.Native("none"), 5, FileError::PathNotFound, ""},
                 {folder.Native("a/b"), 5, FileError::PathNotFound, ""},
                 {"", 5, FileError::PathNotFound, ""},
                 {"/dev/zero", 5, FileError::AccessError, ""}};
    for (const auto &one : cases) {
        ByteArray bytes = {1, 2, 3};
        EXPECT_EQ(ReadWholeFile(one.Path, bytes, one.Limit), one.Error) << one.Path;
        EXPECT_EQ(std::string(bytes.begin(), bytes.end()), one.Bytes) << one.Path;
    }
}

TEST(FileIo, ReadsAtAnyOffset)
{
    const TempFolder folder;
    folder.Put("a", "0123456789");
    InputFile first;
    ASSERT_EQ(first.Open(folder.Native("a")), FileError::None);
    InputFile file = std::move(first);
    ASSERT_TRUE(file.IsOpen());
    EXPECT_EQ(file.Size(), 10);
    const auto read = [&file](std::int64_t offset, std::size_t count) {
        ByteArray bytes(count);
        bytes.resize(file.ReadAt(offset, bytes));
        return std::string(bytes.begin(), bytes.end());
    };
    EXPECT_EQ(read(3, 4), "3456");
    EXPECT_EQ(read(8, 4), "89");
    EXPECT_EQ(read(10, 4), "");
    EXPECT_EQ(read(-1, 4), "");
    file.Close();
    EXPECT_EQ(read(0, 4), "");
}

TEST(FileIo, ReplacesKeepingModeAndLinks)
{
    const TempFolder folder;
    folder.Put("a", "a much longer older file");
    ASSERT_EQ(::chmod(folder.Native("a").c_str(), 0640), 0);
    ASSERT_EQ(::symlink("a", folder.Native("link").c_str()), 0);
    ASSERT_EQ(WriteWholeFile(folder.Native("link"), BytesOf("new")), FileError::None);
    EXPECT_EQ(folder.Get("a"), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(folder.Native("link")));
    EXPECT_EQ(std::filesystem::status(folder.Native("a")).permissions(), std::filesystem::perms(0640));
    ASSERT_EQ(WriteWholeFile(folder.Native("fresh"), BytesOf("")), FileError::None);
    EXPECT_TRUE(GetFileFacts(folder.Native("fresh")).Exists);
    EXPECT_EQ(folder.EntryCount(), 3U) << "no temporary stays";
}

TEST(FileIo, FailedWritesLeaveWhatWas)
{
    const TempFolder folder;
    folder.Put("old", "old");
    folder.MakeFolder("sub");
    const std::string big(1 << 20, 'x');
    {
        const FileSizeLimit full(1000);
        EXPECT_EQ(WriteWholeFile(folder.Native("old"), BytesOf(big)), FileError::AccessError);
        EXPECT_EQ(WriteWholeFile(folder.Native("new"), BytesOf(big)), FileError::AccessError);
    }
    EXPECT_EQ(WriteWholeFile(folder.Native("sub"), BytesOf("x")), FileError::AccessError);
    EXPECT_EQ(WriteWholeFile(folder.Native("old/x"), BytesOf("x")), FileError::PathNotFound);
    EXPECT_EQ(WriteWholeFile(folder.Native("none/x"), BytesOf("x")), FileError::PathNotFound);
    EXPECT_EQ(WriteWholeFile("", BytesOf("x")), FileError::PathNotFound);
    EXPECT_EQ(WriteWholeFile("/dev/full", BytesOf("x")), FileError::AccessError);
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
    {
        OutputFile abandoned;
        ASSERT_EQ(abandoned.Open(folder.Native("old")), FileError::None);
        ASSERT_EQ(abandoned.Write(BytesOf("half")), FileError::None);
        ASSERT_EQ(abandoned.Open(folder.Native("other")), FileError::None);
    }
    EXPECT_EQ(folder.Get("old"), "old");
    EXPECT_EQ(folder.EntryCount(), 2U);
}

TEST(FileIo, WritesInPiecesAndAtOffsets)
{
    const TempFolder folder;
    folder.Put("a", "old");
    OutputFile file;
    ASSERT_EQ(file.Open(folder.Native("a")), FileError::None);
    file.Write(BytesOf("head"));
    file.Write(BytesOf("tail"));
    file.WriteAt(2, BytesOf("AD"));
    file.Write(BytesOf("!"));
    EXPECT_EQ(folder.Get("a"), "old") << "until it is complete";
    EXPECT_EQ(file.Commit(), FileError::None);
    EXPECT_EQ(folder.Get("a"), "heADtail!");
    EXPECT_NE(file.Write(BytesOf("late")), FileError::None);
    EXPECT_NE(OutputFile().Commit(), FileError::None) << "nothing was opened";
}

TEST(FileIo, TellsFactsAndMakesAndRemoves)
{
    const TempFolder folder;
    folder.Put(".hidden", "123");
    EXPECT_EQ(MakeFolder(folder.Native("sub")), FileError::None);
    EXPECT_EQ(MakeFolder(folder.Native("sub")), FileError::None);
    EXPECT_EQ(MakeFolder(folder.Native("a/b")), FileError::PathNotFound);
    EXPECT_EQ(MakeFolder(folder.Native(".hidden")), FileError::AccessError) << "a file has the name";
    const FileFacts hidden = GetFileFacts(folder.Native(".hidden"));
    EXPECT_TRUE(hidden.Exists && hidden.IsHidden && !hidden.IsFolder);
    EXPECT_EQ(hidden.Size, 3);
    const FileFacts sub = GetFileFacts(folder.Native("sub"));
    EXPECT_TRUE(sub.Exists && !sub.IsHidden && sub.IsFolder);
    EXPECT_FALSE(GetFileFacts(folder.Native("none")).Exists);
    EXPECT_TRUE(CanWriteFolder(folder.Native()));
    EXPECT_FALSE(CanWriteFolder(folder.Native(".hidden")));
    EXPECT_EQ(RemoveFile(folder.Native("sub")), FileError::AccessError);
    EXPECT_EQ(RemoveFile(folder.Native(".hidden")), FileError::None);
    EXPECT_EQ(RemoveFile(folder.Native(".hidden")), FileError::PathNotFound);
}

} // namespace
