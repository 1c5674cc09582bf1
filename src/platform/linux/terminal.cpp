#include "platform/terminal.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace wb
{

void ReserveStandardStreams()
{
    // open() gives the lowest number that is free.
    for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream)
        if (::fcntl(stream, F_GETFD) < 0)
            ::open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
}

int TerminalColumns(std::FILE *stream)
{
    constexpr int usualColumns = 80; // of one that does not tell
    const int descriptor = ::fileno(stream);
    if (::isatty(descriptor) == 0)
        return 0;
    winsize size = {};
    return ::ioctl(descriptor, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : usualColumns;
}

StandardErrorDropped::StandardErrorDropped()
    : m_kept(::fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1))
{
    const int nowhere = m_kept >= 0 ? ::open("/dev/null", O_WRONLY | O_CLOEXEC) : -1;
    if (nowhere < 0)
        return;
    ::dup2(nowhere, STDERR_FILENO);
    ::close(nowhere);
}

StandardErrorDropped::~StandardErrorDropped()
{
    if (m_kept < 0)
        return;
    ::dup2(m_kept, STDERR_FILENO);
    ::close(m_kept);
}

} // namespace wb
