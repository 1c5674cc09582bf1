#include "platform/linux/systemfile.h"

#include "platform/linux/handles.h"

#include <fcntl.h>

namespace wb
{

std::string ReadSystemFile(const char *path)
{
    const Descriptor file(::open(path, O_RDONLY | O_CLOEXEC));
    std::string text;
    char buffer[4096];
    for (ssize_t count = 0; file.IsOpen() && (count = ::read(file.Get(), buffer, sizeof buffer)) > 0;)
        text.append(buffer, std::size_t(count));
    return text;
}

} // namespace wb
