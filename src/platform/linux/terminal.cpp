#include "platform/terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

namespace wb
{

int TerminalColumns(std::FILE *stream)
{
    constexpr int usualColumns = 80; // of one that does not tell
    const int descriptor = ::fileno(stream);
    if (::isatty(descriptor) == 0)
        return 0;
    winsize size = {};
    return ::ioctl(descriptor, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : usualColumns;
}

} // namespace wb
