#include "platform/linux/userfiles.h"

#include "platform/fileio.h"

#include <cstdlib>
#include <filesystem>
#include <pwd.h>
#include <unistd.h>

namespace wb
{

namespace
{

constexpr std::int64_t MaxFileBytes = 4 << 20;

// Empty for a user without one.
std::string Home()
{
    const char *home = std::getenv("HOME");
    if (home == nullptr || home[0] != '/') {
        const passwd *user = ::getpwuid(::getuid());
        home = user != nullptr ? user->pw_dir : nullptr;
    }
    return home != nullptr && home[0] == '/' ? home : "";
}

// Relative ones are to be ignored.
std::string FolderOf(const char *variable, const char *belowHome)
{
    const char *value = std::getenv(variable);
    if (value != nullptr && value[0] == '/')
        return value;
    const std::string home = Home();
    return home.empty() ? "" : home + belowHome;
}

} // namespace

XdgFolders UserFolders()
{
    return {FolderOf("XDG_DATA_HOME", "/.local/share"), FolderOf("XDG_CONFIG_HOME", "/.config")};
}

bool ReadUserFile(const std::string &path, QByteArray &bytes)
{
    ByteArray read;
    const bool isRead = ReadWholeFile(path, read, MaxFileBytes) == FileError::None;
    bytes = QByteArray(reinterpret_cast<const char *>(read.data()), qsizetype(read.size()));
    return isRead || !GetFileFacts(path).Exists;
}

bool KeepUserFile(const std::string &path, const QByteArray &bytes, bool *changed)
{
    QByteArray older;
    const bool isThere = GetFileFacts(path).Exists;
    if (isThere != bytes.isEmpty() && ReadUserFile(path, older) && older == bytes)
        return true;
    if (changed != nullptr)
        *changed = true;
    if (bytes.isEmpty())
        return RemoveFile(path) == FileError::None;
    std::error_code ignored; // writing tells
    std::filesystem::create_directories(std::filesystem::path(path).parent_path(), ignored);
    const auto *data = reinterpret_cast<const std::uint8_t *>(bytes.data());
    return WriteWholeFile(path, {data, std::size_t(bytes.size())}) == FileError::None;
}

} // namespace wb
