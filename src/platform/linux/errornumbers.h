// The system's error numbers as file errors.
#pragma once

#include "platform/fileio.h"

namespace wb
{

// None for 0.
FileError FileErrorOf(int errorNumber);

} // namespace wb
