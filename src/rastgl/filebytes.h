// Whole files in and out. Paths are in the encoding that fopen takes.
#pragma once

#include "rastgl/picture.h"

#include <optional>
#include <vector>

namespace rastgl
{

// The bytes of a regular file; nothing when it can't be read to its end.
std::optional<std::vector<std::uint8_t>> ReadFileBytes(const char *path);

// Puts a file of these bytes at `path`. It is written beside and renamed over what is there, so a failure
// leaves the former file as it was and no remains of the new one. False on failure, also when `path` names
// something that is no regular file.
bool ReplaceFile(const char *path, Bytes bytes);

} // namespace rastgl
