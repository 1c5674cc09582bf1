#include "platform/programfolder.h"

#include "platform/linux/userfiles.h"
#include "platform/nativepath.h"

#include <climits>
#include <unistd.h>

namespace wb
{

std::string NativeProgramFolder()
{
    char buffer[PATH_MAX];
    const ssize_t length = ::readlink("/proc/self/exe", buffer, sizeof buffer);
    const std::string program(buffer, length > 0 ? std::size_t(length) : 0);
    const std::size_t separator = program.rfind('/');
    return separator == std::string::npos || separator == 0 ? "/" : program.substr(0, separator);
}

QString ProgramFolder()
{
    return FromNativePath(NativeProgramFolder());
}

bool IsSystemFolder(const std::string &path)
{
    return path.starts_with("/usr/") || path.starts_with("/opt/");
}

QString UserConfigFolder()
{
    const std::string folder = UserFolders().Config;
    return folder.empty() ? QString() : FromNativePath(folder + "/workbench");
}

} // namespace wb
