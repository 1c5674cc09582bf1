// Tells cheaply whether a folder is worth listing again.
#pragma once

#include <cstdint>
#include <string>

namespace wb
{

class FolderWatch
{
public:
    FolderWatch() = default;
    FolderWatch(const FolderWatch &) = delete;
    FolderWatch &operator=(const FolderWatch &) = delete;
    ~FolderWatch() { End(); }

    // Watches the native path `folder` from now on, instead of what was watched before. Call it before
    // listing the folder, so that no change falls between.
    void Watch(std::string folder);

    // False only when nothing was added to the folder, removed from it or renamed in it since Watch or the
    // last answer. Does not wait. Always true where the system can't tell: nothing watched, no more watches
    // to be had, and from Watch on a network or FUSE file system. When the folder itself is removed, moved or
    // hidden by a mount the answer is true, and what has the path then is watched.
    bool MayHaveChanged();

private:
    void Begin();
    void End();
    bool DrainEvents();
    bool IsSameFolder() const;

    std::string m_folder;
    bool m_isElsewhere = false; // where others change it too, unnoticed by this machine
    int m_descriptor = -1;
    std::uint64_t m_device = 0;
    std::uint64_t m_inode = 0;
};

} // namespace wb
