#include "platform/folderwatch.h"

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <linux/magic.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

namespace wb
{

namespace
{

// Disks of this machine, where every change passes through this kernel. Everything else may change behind it.
constexpr std::uint32_t LocalFileSystems[] = {EXT4_SUPER_MAGIC,      BTRFS_SUPER_MAGIC, F2FS_SUPER_MAGIC,
                                              TMPFS_MAGIC,           RAMFS_MAGIC,       MSDOS_SUPER_MAGIC,
                                              EXFAT_SUPER_MAGIC,     ISOFS_SUPER_MAGIC, UDF_SUPER_MAGIC,
                                              OVERLAYFS_SUPER_MAGIC, XFS_SUPER_MAGIC,   SQUASHFS_MAGIC};

bool IsLocal(const struct statfs &volume)
{
    return std::find(std::begin(LocalFileSystems), std::end(LocalFileSystems),
                     std::uint32_t(volume.f_type)) != std::end(LocalFileSystems);
}

} // namespace

void FolderWatch::Watch(std::string folder)
{
    m_folder = std::move(folder);
    Begin();
}

void FolderWatch::Begin()
{
    End();
    struct statfs volume = {};
    struct stat facts = {};
    m_isElsewhere = ::statfs(m_folder.c_str(), &volume) == 0 && !IsLocal(volume);
    if (m_isElsewhere || ::stat(m_folder.c_str(), &facts) != 0)
        return;
    m_device = facts.st_dev;
    m_inode = facts.st_ino;
    m_descriptor = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    constexpr std::uint32_t events = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_ATTRIB |
                                     IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;
    if (m_descriptor >= 0 && ::inotify_add_watch(m_descriptor, m_folder.c_str(), events) < 0)
        End();
}

void FolderWatch::End()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
    m_descriptor = -1;
}

bool FolderWatch::MayHaveChanged()
{
    // A server that is gone would let any question wait.
    if (m_isElsewhere)
        return true;
    const bool hasEvents = m_descriptor >= 0 && DrainEvents();
    // A renamed parent tells the watch nothing, but another folder, or none, has the path now.
    if (m_descriptor >= 0 && IsSameFolder())
        return hasEvents;
    Begin();
    return true;
}

// True when there were events; which ones does not matter but for the last one of a watch that is gone.
bool FolderWatch::DrainEvents()
{
    alignas(inotify_event) char buffer[4096];
    bool hasEvents = false;
    bool isGone = false;
    for (ssize_t count = 0; (count = ::read(m_descriptor, buffer, sizeof buffer)) > 0;) {
        hasEvents = true;
        const inotify_event *event = nullptr;
        for (ssize_t at = 0; at < count; at += ssize_t(sizeof *event) + event->len) {
            event = reinterpret_cast<const inotify_event *>(buffer + at);
            isGone = isGone || (event->mask & IN_IGNORED) != 0;
        }
    }
    if (isGone)
        End();
    return hasEvents;
}

bool FolderWatch::IsSameFolder() const
{
    struct stat facts = {};
    return ::stat(m_folder.c_str(), &facts) == 0 && facts.st_dev == m_device && facts.st_ino == m_inode;
}

} // namespace wb
