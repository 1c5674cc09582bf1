#include "platform/fileio.h"

#include "platform/linux/errornumbers.h"
#include "platform/linux/handles.h"

#include <cerrno>
#include <fcntl.h>
#include <new>
#include <stdexcept>
#include <sys/stat.h>

namespace wb
{

namespace
{

bool CanWrite(const std::string &path, int mode)
{
    return ::faccessat(AT_FDCWD, path.c_str(), mode, AT_EACCESS) == 0;
}

// Reads until `target` is full or the file ends; `errorNumber` becomes what stopped it otherwise.
std::size_t ReadFully(int descriptor, std::int64_t offset, std::span<std::uint8_t> target, int &errorNumber)
{
    std::size_t done = 0;
    while (done < target.size()) {
        const ssize_t count =
            ::pread(descriptor, target.data() + done, target.size() - done, offset + std::int64_t(done));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0) {
            errorNumber = count < 0 ? errno : 0;
            return done;
        }
        done += std::size_t(count);
    }
    return done;
}

bool Resize(ByteArray &bytes, std::int64_t size)
{
    try {
        bytes.resize(std::size_t(size));
        return true;
    } catch (const std::bad_alloc &) {
        return false;
    } catch (const std::length_error &) {
        return false;
    }
}

} // namespace

FileError FileErrorOf(int errorNumber)
{
    switch (errorNumber) {
    case 0:
        return FileError::None;
    case EACCES:
    case EPERM:
    case EROFS:
    case EBUSY:
    case ETXTBSY:
        return FileError::PermissionDenied;
    case EIO:
    case ENXIO:
    case ENODEV:
    case ENOMEDIUM:
    case ESTALE:
    case ETIMEDOUT:
    case EHOSTDOWN:
    case EHOSTUNREACH:
    case ENOTCONN:
        return FileError::DriveNotReady;
    case ENOENT:
    case ENOTDIR:
    case ENAMETOOLONG:
    case ELOOP:
        return FileError::PathNotFound;
    default:
        return FileError::AccessError;
    }
}

FileFacts GetFileFacts(const std::string &path)
{
    struct stat status = {};
    if (::stat(path.c_str(), &status) != 0)
        return {};
    FileFacts facts;
    facts.Exists = true;
    facts.IsFolder = S_ISDIR(status.st_mode);
    facts.IsReadOnly = !CanWrite(path, W_OK);
    facts.IsHidden = path.substr(path.rfind('/') + 1).starts_with('.');
    facts.Size = facts.IsFolder ? 0 : status.st_size;
    facts.Volume = status.st_dev;
    facts.Number = status.st_ino;
    return facts;
}

bool IsLink(const std::string &path)
{
    struct stat status = {};
    return ::lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode);
}

bool CanWriteFolder(const std::string &path)
{
    return GetFileFacts(path).IsFolder && CanWrite(path, W_OK | X_OK);
}

FileError ReadWholeFile(const std::string &path, ByteArray &bytes, std::int64_t limit)
{
    bytes.clear();
    InputFile file;
    const FileError error = file.Open(path);
    if (error != FileError::None)
        return error;
    if (file.Size() > limit || !Resize(bytes, file.Size()))
        return FileError::AccessError;
    int errorNumber = 0;
    bytes.resize(ReadFully(file.m_descriptor, 0, bytes, errorNumber));
    if (errorNumber != 0)
        bytes.clear();
    return FileErrorOf(errorNumber);
}

FileError WriteWholeFile(const std::string &path, ByteView bytes, const OutputFile::Options &options)
{
    OutputFile file;
    FileError error = file.Open(path, options);
    if (error == FileError::None)
        error = file.Write(bytes);
    return error == FileError::None ? file.Commit() : error;
}

FileError RemoveFile(const std::string &path)
{
    return FileErrorOf(::unlink(path.c_str()) == 0 ? 0 : errno);
}

FileError MakeFolder(const std::string &path)
{
    if (::mkdir(path.c_str(), 0777) == 0)
        return FileError::None;
    const int errorNumber = errno;
    const bool isThere = errorNumber == EEXIST && GetFileFacts(path).IsFolder;
    return isThere ? FileError::None : FileErrorOf(errorNumber);
}

InputFile::InputFile(InputFile &&other) noexcept
    : m_descriptor(std::exchange(other.m_descriptor, -1)), m_size(std::exchange(other.m_size, 0))
{
}

InputFile &InputFile::operator=(InputFile &&other) noexcept
{
    std::swap(m_descriptor, other.m_descriptor);
    std::swap(m_size, other.m_size);
    return *this;
}

InputFile::~InputFile()
{
    Close();
}

FileError InputFile::Open(const std::string &path)
{
    Close();
    // A pipe that nobody writes to would block here.
    Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status = {};
    if (!file.IsOpen() || ::fstat(file.Get(), &status) != 0)
        return FileErrorOf(errno);
    if (!S_ISREG(status.st_mode))
        return FileError::AccessError;
    m_descriptor = file.Release();
    m_size = status.st_size;
    return FileError::None;
}

void InputFile::Close()
{
    const Descriptor closing(std::exchange(m_descriptor, -1));
    m_size = 0;
}

std::size_t InputFile::ReadAt(std::int64_t offset, std::span<std::uint8_t> target) const
{
    int errorNumber = 0;
    return ReadFully(m_descriptor, offset, target, errorNumber);
}

} // namespace wb
