#include "platform/linux/mounts.h"

#include <algorithm>
#include <array>
#include <map>

namespace wb
{

namespace
{

std::vector<std::string_view> Split(std::string_view text, char separator)
{
    std::vector<std::string_view> parts;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(separator), text.size());
        if (end > 0)
            parts.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return parts;
}

// The kernel writes blank, tab, line feed and backslash as "\" and three octal digits.
std::string Unescape(std::string_view field)
{
    const auto isOctal = [](char digit) { return digit >= '0' && digit <= '7'; };
    std::string plain;
    for (std::size_t index = 0; index < field.size(); ++index) {
        const std::string_view digits = field.substr(index).substr(0, 4);
        if (digits.size() == 4 && digits[0] == '\\' &&
            std::all_of(digits.begin() + 1, digits.end(), isOctal)) {
            plain += char((digits[1] - '0') * 64 + (digits[2] - '0') * 8 + (digits[3] - '0'));
            index += 3;
        } else {
            plain += field[index];
        }
    }
    return plain;
}

bool IsUnder(std::string_view path, std::string_view folder)
{
    return path.starts_with(folder) && path.size() > folder.size() && path[folder.size()] == '/';
}

template <std::size_t N>
bool IsUnderAny(std::string_view path, const std::array<std::string_view, N> &folders)
{
    return std::any_of(folders.begin(), folders.end(),
                       [&](std::string_view folder) { return IsUnder(path, folder); });
}

constexpr std::array<std::string_view, 3> UserFolders = {"/media", "/run/media", "/mnt"};
constexpr std::array<std::string_view, 14> SystemFolders = {"/proc", "/sys",  "/dev", "/run", "/tmp",
                                                            "/boot", "/snap", "/var", "/usr", "/etc",
                                                            "/lib",  "/efi",  "/opt", "/nix"};

template <std::size_t N>
bool IsOneOf(std::string_view name, const std::array<std::string_view, N> &names)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

bool IsNetwork(std::string_view fileSystem)
{
    constexpr std::array<std::string_view, 19> names = {
        "nfs",           "nfs4",        "cifs",        "smb3",           "smbfs",         "9p",
        "afs",           "ceph",        "coda",        "ncpfs",          "davfs",         "fuse.sshfs",
        "lustre",        "fuse.davfs2", "fuse.rclone", "fuse.curlftpfs", "fuse.smbnetfs", "fuse.s3fs",
        "fuse.glusterfs"};
    return IsOneOf(fileSystem, names);
}

int DriveTypeOf(const Mount &mount, const MountQuestions &questions)
{
    if (mount.FileSystem == "iso9660" || mount.FileSystem == "udf")
        return DriveOptical;
    if (IsNetwork(mount.FileSystem))
        return DriveNetwork;
    if (mount.FileSystem == "tmpfs" || mount.FileSystem == "ramfs" || mount.Source.starts_with("/dev/ram"))
        return DriveRam;
    return questions.IsRemovable(mount) ? DriveRemovable : DriveFixed;
}

// The type of drive that the mount is, or 0 when a person would not call it one.
int DriveTypeIfDrive(const Mount &mount, const MountQuestions &questions)
{
    const bool isUsers = IsUnderAny(mount.MountPoint, UserFolders);
    const std::string below = mount.MountPoint + "/";
    if (!isUsers && IsUnderAny(below, SystemFolders))
        return 0;
    const int type = DriveTypeOf(mount, questions);
    const bool isDrive = isUsers || type != DriveFixed;
    // A server that is gone would let the question wait for ever, and nobody exports a single file.
    return isDrive && (type == DriveNetwork || questions.IsFolder(mount)) ? type : 0;
}

} // namespace

std::vector<Mount> ParseMountInfo(std::string_view text)
{
    std::map<std::string, Mount> byMountPoint;
    for (const std::string_view line : Split(text, '\n')) {
        // ID, parent, device, root, mount point, options, optional fields, "-", type, source, options
        const std::vector<std::string_view> fields = Split(line, ' ');
        const auto dash = std::find(
            fields.begin() + std::min<std::ptrdiff_t>(6, std::ptrdiff_t(fields.size())), fields.end(), "-");
        if (fields.end() - dash < 3)
            continue;
        Mount mount{std::string(fields[2]), Unescape(fields[4]), Unescape(dash[1]), Unescape(dash[2])};
        if (mount.MountPoint.starts_with('/'))
            byMountPoint[mount.MountPoint] = std::move(mount);
    }
    std::vector<Mount> mounts;
    mounts.reserve(byMountPoint.size());
    for (auto &entry : byMountPoint)
        mounts.push_back(std::move(entry.second));
    return mounts;
}

DriveTable DrivesFromMounts(const std::vector<Mount> &mounts, const MountQuestions &questions,
                            const DriveTable &given)
{
    const auto root = std::ranges::find(mounts, "/", &Mount::MountPoint);
    DriveTable drives = {{'C', DriveFixed, root == mounts.end() ? QString() : questions.Label(*root), "/"}};

    const auto isTaken = [&](char letter) {
        const auto older = std::ranges::find(given, letter, &Drive::Letter);
        const bool isThere =
            older != given.end() && std::ranges::count(mounts, older->MountPoint, &Mount::MountPoint) > 0;
        return isThere || std::ranges::count(drives, letter, &Drive::Letter) > 0;
    };
    // One that nobody had; else one whose drive is gone.
    const auto freeLetter = [&]() -> char {
        for (const bool isNew : {true, false})
            for (char letter = 'D'; letter <= 'Z'; ++letter)
                if (!isTaken(letter) && !(isNew && std::ranges::count(given, letter, &Drive::Letter) > 0))
                    return letter;
        return 0;
    };
    const auto letterOf = [&](const std::string &mountPoint) {
        const auto older = std::ranges::find(given, mountPoint, &Drive::MountPoint);
        return older != given.end() ? older->Letter : freeLetter();
    };
    for (auto mount = mounts.begin(); mount != mounts.end(); ++mount) {
        const int type = mount == root ? 0 : DriveTypeIfDrive(*mount, questions);
        const char letter = type != 0 ? letterOf(mount->MountPoint) : 0;
        if (letter != 0)
            drives.push_back({letter, type, questions.Label(*mount), mount->MountPoint});
    }
    std::ranges::sort(drives, {}, &Drive::Letter);
    return drives;
}

} // namespace wb
