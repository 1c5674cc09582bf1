// Which of the machine's mounts are drives.
#pragma once

#include "platform/drives.h"

#include <functional>
#include <string_view>

namespace wb
{

// One line of /proc/self/mountinfo (proc_pid_mountinfo(5)), its octal escapes undone.
struct Mount {
    std::string Device; // "major:minor"
    std::string MountPoint;
    std::string FileSystem; // type: "ext4", "fuse.sshfs"
    std::string Source;     // "/dev/sdb1", "server:/export"
};

// The mounts in the order of their mount points. Lines that are not of the file's form are skipped. Of
// several mounts on one mount point the last one counts: it hides the others.
std::vector<Mount> ParseMountInfo(std::string_view text);

// What has to be asked of the machine about a mount.
struct MountQuestions {
    std::function<bool(const Mount &)> IsRemovable; // the medium can be taken out
    std::function<bool(const Mount &)> IsFolder;    // single files can be mounted too
    std::function<QString(const Mount &)> Label;
};

// The drives in letter order: "/" is C:; then come, in the order of `mounts`, what a person would call a
// drive: removable, optical, network and RAM disks outside the system's own folders, and whatever is mounted
// under /media, /run/media and /mnt. One of those that a letter was `given` gets it again, and no other drive
// does while there are letters that nobody had, because the program holds paths of open files. What the
// letters up to Z do not suffice for is left out.
DriveTable DrivesFromMounts(const std::vector<Mount> &mounts, const MountQuestions &questions,
                            const DriveTable &given);

} // namespace wb
