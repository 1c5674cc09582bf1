// Owners of what the system's file calls hand out.
#pragma once

#include <dirent.h>
#include <memory>
#include <unistd.h>
#include <utility>

namespace wb
{

// A file descriptor, closed when its owner goes.
class Descriptor
{
public:
    explicit Descriptor(int descriptor) : m_descriptor(descriptor) {}
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;
    ~Descriptor()
    {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }

    int Get() const { return m_descriptor; }
    bool IsOpen() const { return m_descriptor >= 0; }
    int Release() { return std::exchange(m_descriptor, -1); }

private:
    int m_descriptor;
};

struct CloseFolder {
    void operator()(DIR *folder) const { ::closedir(folder); }
};

using FolderStream = std::unique_ptr<DIR, CloseFolder>;

inline bool IsDotOrDotDot(const char *name)
{
    return name[0] == '.' && (name[1] == 0 || (name[1] == '.' && name[2] == 0));
}

} // namespace wb
