// The files in which the kernel tells about the machine.
#pragma once

#include <string>

namespace wb
{

// A file of /proc or /sys, which tells no size before it is read; empty when it can't be.
std::string ReadSystemFile(const char *path);

} // namespace wb
