#include "platform/fileio.h"
#include "platform/linux/errornumbers.h"
#include "platform/linux/handles.h"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <random>
#include <string>
#include <sys/stat.h>
#include <tuple>

namespace wb
{

namespace
{

std::string FolderOf(const std::string &path)
{
    return path.substr(0, path.rfind('/') + 1);
}

std::string FreshNameBeside(const std::string &path)
{
    static std::random_device random;
    return FolderOf(path) + ".workbench-" + std::to_string(random());
}

} // namespace

FileError OutputFile::Fail(int errorNumber)
{
    m_error = FileErrorOf(errorNumber);
    return m_error;
}

FileError OutputFile::Open(const std::string &path, const Options &options)
{
    Abandon();
    m_error = FileError::None;
    m_isFlushed = false;
    if (path.empty())
        return Fail(ENOENT);
    struct stat status = {};
    if (options.IsBeside && ::lstat(path.c_str(), &status) != 0 && errno == ENOENT)
        return OpenBeside(path);
    m_descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (m_descriptor >= 0) {
        m_path = m_written = path;
        return m_error;
    }
    if (errno != EEXIST)
        return Fail(errno);
    m_isFlushed = options.IsFlushed;
    return OpenExisting(path);
}

FileError OutputFile::OpenExisting(const std::string &path)
{
    char target[PATH_MAX];
    struct stat status = {};
    if (::realpath(path.c_str(), target) == nullptr || ::stat(target, &status) != 0 ||
        ::faccessat(AT_FDCWD, target, W_OK, AT_EACCESS) != 0)
        return Fail(errno);
    if (S_ISREG(status.st_mode))
        return OpenBeside(target) == FileError::None ? TakeRightsOf(status) : m_error;

    m_isFlushed = false; // devices and pipes refuse it
    // A folder refuses to be opened for writing; a pipe that nobody reads would block without O_NONBLOCK.
    m_descriptor = ::open(target, O_WRONLY | O_CLOEXEC | O_NONBLOCK);
    if (m_descriptor < 0)
        return Fail(errno);
    ::fcntl(m_descriptor, F_SETFL, 0);
    return m_error;
}

FileError OutputFile::OpenBeside(const std::string &target)
{
    m_path = target;
    if (OpenNameless() || OpenNamed())
        return m_error;
    const int errorNumber = errno;
    m_written.clear();
    return Fail(errorNumber);
}

// Not every file system has such files, and only /proc can name them.
bool OutputFile::OpenNameless()
{
    m_written.clear();
    if (::access("/proc/self/fd", X_OK) == 0)
        m_descriptor = ::open(FolderOf(m_path).c_str(), O_WRONLY | O_TMPFILE | O_CLOEXEC, 0666);
    return m_descriptor >= 0;
}

bool OutputFile::OpenNamed()
{
    do {
        m_written = FreshNameBeside(m_path);
        m_descriptor = ::open(m_written.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    } while (m_descriptor < 0 && errno == EEXIST);
    return m_descriptor >= 0;
}

FileError OutputFile::GiveName()
{
    const std::string nameless = "/proc/self/fd/" + std::to_string(m_descriptor);
    int result = 0;
    do {
        m_written = FreshNameBeside(m_path);
        result = ::linkat(AT_FDCWD, nameless.c_str(), AT_FDCWD, m_written.c_str(), AT_SYMLINK_FOLLOW);
    } while (result != 0 && errno == EEXIST);
    if (result == 0)
        return m_error;
    const int errorNumber = errno;
    m_written.clear();
    return Fail(errorNumber);
}

void OutputFile::SetTargetName(const std::string &name)
{
    m_path = FolderOf(m_path) + name;
}

FileError OutputFile::TakeRightsOf(const struct stat &older)
{
    struct stat own = {};
    if (::fstat(m_descriptor, &own) != 0)
        return Fail(errno);
    // Only the superuser may give files away, and not where the owner has no number here. What could be kept
    // neither way is the writer's.
    const bool isSameOwner = own.st_uid == older.st_uid && own.st_gid == older.st_gid;
    if (!isSameOwner && ::fchown(m_descriptor, older.st_uid, older.st_gid) != 0)
        std::ignore = ::fchown(m_descriptor, own.st_uid, older.st_gid);
    // Not every file system lets bits be changed; those that it makes up are the same for all files.
    constexpr mode_t rights = 0777;
    const bool isSameMode = ((own.st_mode ^ older.st_mode) & rights) == 0;
    return isSameMode || ::fchmod(m_descriptor, older.st_mode & rights) == 0 ? m_error : Fail(errno);
}

FileError OutputFile::Write(ByteView bytes)
{
    while (m_error == FileError::None && !bytes.empty()) {
        const ssize_t count = ::write(m_descriptor, bytes.data(), bytes.size());
        if (count >= 0)
            bytes = bytes.subspan(std::size_t(count));
        else if (errno != EINTR)
            Fail(errno);
    }
    return m_error;
}

FileError OutputFile::WriteAt(std::int64_t offset, ByteView bytes)
{
    while (m_error == FileError::None && !bytes.empty()) {
        const ssize_t count = ::pwrite(m_descriptor, bytes.data(), bytes.size(), offset);
        if (count >= 0) {
            bytes = bytes.subspan(std::size_t(count));
            offset += count;
        } else if (errno != EINTR) {
            Fail(errno);
        }
    }
    return m_error;
}

FileError OutputFile::Commit()
{
    const bool isBeside = m_written != m_path;
    if (m_error == FileError::None && m_isFlushed && ::fsync(m_descriptor) != 0)
        Fail(errno);
    if (m_error == FileError::None && isBeside && m_written.empty())
        GiveName();
    // Network file systems tell of a full disk only here.
    if (::close(std::exchange(m_descriptor, -1)) != 0 && m_error == FileError::None)
        Fail(errno);
    if (m_error == FileError::None && isBeside && std::rename(m_written.c_str(), m_path.c_str()) != 0)
        Fail(errno);
    if (m_error == FileError::None)
        m_written.clear();
    Abandon();
    return m_error;
}

void OutputFile::Abandon()
{
    const Descriptor closing(std::exchange(m_descriptor, -1));
    if (!m_written.empty())
        ::unlink(m_written.c_str());
    m_written.clear();
    m_path.clear();
}

} // namespace wb
