// A disk without room for what is to be written.
#pragma once

#include <csignal>
#include <functional>

#include <sys/resource.h>

namespace wb
{

// Runs while files can grow to so many bytes only, as on a full disk.
inline void OnAFullDisk(rlim_t bytes, const std::function<void()> &action)
{
    rlimit before = {};
    ::getrlimit(RLIMIT_FSIZE, &before);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit = {bytes, before.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &limit);
    action();
    ::setrlimit(RLIMIT_FSIZE, &before);
    (void)std::signal(SIGXFSZ, handler);
}

} // namespace wb
