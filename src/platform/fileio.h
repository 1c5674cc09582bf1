// File work on native paths (nativepath.h). Nothing here throws or shows a message; an empty path names no
// file.
#pragma once

#include "common/bytearray.h"

#include <cstdint>
#include <string>

struct stat;

namespace wb
{

// The numbers that file errors are told by.
enum class FileError : int {
    None = 0,
    PermissionDenied = 70,
    DriveNotReady = 71,
    AccessError = 75, // also what has no number of its own: a full disk, a folder where a file belongs
    PathNotFound = 76
};

struct FileFacts {
    bool Exists = false; // a link counts as what it leads to
    bool IsFolder = false;
    bool IsReadOnly = false; // this user can't write to it
    bool IsHidden = false;   // its name begins with a dot
    std::int64_t Size = 0;   // bytes; 0 for a folder

    // Two files or folders that are one and the same have the same of both.
    std::uint64_t Volume = 0;
    std::uint64_t Number = 0;

    bool IsSameAs(const FileFacts &other) const
    {
        return Exists && other.Exists && Volume == other.Volume && Number == other.Number;
    }
};

FileFacts GetFileFacts(const std::string &path);

// True for a link, wherever it leads.
bool IsLink(const std::string &path);

// True for a folder that this user may make files in.
bool CanWriteFolder(const std::string &path);

// Replaces `bytes` with the file. Empty on an error, which a file above `limit` bytes and what is neither
// file nor link to one (a folder, a device, a pipe) are too. A file that shrinks meanwhile gives what was
// there to read.
FileError ReadWholeFile(const std::string &path, ByteArray &bytes, std::int64_t limit);

// Removes a file or a link; a folder stays and gives AccessError.
FileError RemoveFile(const std::string &path);

// Makes one folder; its parent must exist. One that is there already is no error.
FileError MakeFolder(const std::string &path);

// A file open for reading at any offset.
class InputFile
{
public:
    InputFile() = default;
    InputFile(InputFile &&other) noexcept;
    InputFile &operator=(InputFile &&other) noexcept;
    ~InputFile();

    // Closes what was open. Folders, devices and pipes are refused.
    FileError Open(const std::string &path);
    void Close();
    bool IsOpen() const { return m_descriptor >= 0; }

    // Bytes in the file when it was opened.
    std::int64_t Size() const { return m_size; }

    // Fills `target` from `offset` on; gives the number of bytes there were, less than asked for only at the
    // file's end or on an error.
    std::size_t ReadAt(std::int64_t offset, std::span<std::uint8_t> target) const;

private:
    friend FileError ReadWholeFile(const std::string &path, ByteArray &bytes, std::int64_t limit);

    int m_descriptor = -1;
    std::int64_t m_size = 0;
};

// A file being written that replaces an older one only when it is complete: until Commit the older one is
// untouched, and without Commit nothing is left behind.
//  - An older file is replaced by a temporary file beside it, flushed to the disk and renamed over it, so
//    that neither a full disk nor a crash costs the user both. It keeps its permission bits and, where that
//    is allowed, its owner; a link stays a link. One that this user may not write to is refused.
//  - Where none was, the file is made under its own name and not flushed: there is nothing to lose, and jobs
//    that make thousands of files would pay half as much again for renaming alone.
//  - What is made beside its place has no name before Commit, where the file system allows that: nothing is
//    left behind even by a program that was killed.
//  - A device or pipe is written to as it is.
class OutputFile
{
public:
    OutputFile() = default;
    OutputFile(const OutputFile &) = delete;
    OutputFile &operator=(const OutputFile &) = delete;
    ~OutputFile() { Abandon(); }

    struct Options {
        bool IsBeside = false; // also where no older file is: for what takes long to become complete
        bool IsFlushed =
            true; // before it replaces an older one; otherwise a crash of the machine may cost both
    };
    FileError Open(const std::string &path, const Options &options);
    FileError Open(const std::string &path) { return Open(path, {}); }

    // The file that Commit makes, links resolved.
    const std::string &Target() const { return m_path; }

    // What is being made beside its place gets that name in the same folder instead.
    void SetTargetName(const std::string &name);

    // Appends. After a failed write the file can only be abandoned; Commit tells the error again.
    FileError Write(ByteView bytes);

    // Overwrites or extends at `offset`; where Write goes on does not change.
    FileError WriteAt(std::int64_t offset, ByteView bytes);

    FileError Commit();

    // Drops what was written.
    void Abandon();

private:
    FileError OpenExisting(const std::string &path);
    FileError OpenBeside(const std::string &target);
    bool OpenNameless();
    bool OpenNamed();
    FileError GiveName();
    FileError TakeRightsOf(const struct stat &older);
    FileError Fail(int errorNumber);

    int m_descriptor = -1;
    std::string m_path; // what Commit makes
    // What is being written: the temporary, or m_path itself. Empty for one without a name, and for a device,
    // where m_path is empty too.
    std::string m_written;
    bool m_isFlushed = false; // by Commit
    FileError m_error = FileError::None;
};

// Makes `bytes` the file by an OutputFile.
FileError WriteWholeFile(const std::string &path, ByteView bytes, const OutputFile::Options &options = {});

} // namespace wb
