#include "platform/drives.h"

#include "platform/linux/handles.h"
#include "platform/linux/mounts.h"
#include "platform/linux/systemfile.h"
#include "platform/nativepath.h"

#include <climits>
#include <cstdlib>
#include <mutex>
#include <sys/stat.h>

namespace wb
{

namespace
{

constexpr char LabelFolder[] = "/dev/disk/by-label";

// A partition has no flag of its own; its disk, one folder up, does.
bool IsRemovable(const Mount &mount)
{
    const std::string device = "/sys/dev/block/" + mount.Device;
    std::string flag = ReadSystemFile((device + "/removable").c_str());
    if (flag.empty())
        flag = ReadSystemFile((device + "/../removable").c_str());
    return flag.starts_with('1');
}

bool IsFolder(const Mount &mount)
{
    struct stat facts = {};
    return ::lstat(mount.MountPoint.c_str(), &facts) == 0 && S_ISDIR(facts.st_mode);
}

std::string RealPath(const std::string &path)
{
    char resolved[PATH_MAX];
    return ::realpath(path.c_str(), resolved) != nullptr ? resolved : std::string();
}

// udev writes what can't be in a file name as "\x" and two hexadecimal digits.
std::string UnescapeLabel(std::string_view name)
{
    std::string label;
    for (std::size_t index = 0; index < name.size(); ++index) {
        const std::string digits(name.substr(std::min(index + 2, name.size())).substr(0, 2));
        char *end = nullptr;
        const long value = std::strtol(digits.c_str(), &end, 16);
        if (name.substr(index).starts_with("\\x") && digits.size() == 2 && *end == 0) {
            label += char(value);
            index += 3;
        } else {
            label += name[index];
        }
    }
    return label;
}

QString LabelOf(const Mount &mount)
{
    const std::string device = mount.Source.starts_with("/dev/") ? RealPath(mount.Source) : std::string();
    const FolderStream folder(device.empty() ? nullptr : ::opendir(LabelFolder));
    if (folder == nullptr)
        return {};
    while (const dirent *entry = ::readdir(folder.get())) {
        if (!IsDotOrDotDot(entry->d_name) &&
            RealPath(std::string(LabelFolder) + '/' + entry->d_name) == device)
            return DisplayName(FromNativeName(UnescapeLabel(entry->d_name)));
    }
    return {};
}

std::mutex tableLock;
std::shared_ptr<const DriveTable> table; // null until it was read
DriveTable given;                        // whoever had a letter, each letter once

DriveTable ReadTable(const DriveTable &givenBefore)
{
    const std::vector<Mount> mounts = ParseMountInfo(ReadSystemFile("/proc/self/mountinfo"));
    return DrivesFromMounts(mounts, {IsRemovable, IsFolder, LabelOf}, givenBefore);
}

void TakeTable(DriveTable drives)
{
    std::erase_if(given, [&drives](const Drive &older) {
        return std::ranges::count(drives, older.Letter, &Drive::Letter) > 0;
    });
    given.insert(given.end(), drives.begin(), drives.end());
    table = std::make_shared<const DriveTable>(std::move(drives));
}

} // namespace

DriveTable ListDrives()
{
    const auto givenBefore = [] {
        const std::lock_guard guard(tableLock);
        return given;
    };
    DriveTable fresh = ReadTable(givenBefore()); // which may take its time
    const std::lock_guard guard(tableLock);
    TakeTable(std::move(fresh));
    return *table;
}

std::shared_ptr<const DriveTable> KnownDrives()
{
    const std::lock_guard guard(tableLock);
    if (table == nullptr)
        TakeTable(ReadTable(given));
    return table;
}

} // namespace wb
