// Whole-file helpers on paths of the program ("C:\x\y"). They report failure only by their result.
#pragma once

#include "common/bytearray.h"

#include <QString>
#include <cstdint>

namespace wb
{

// Sizes `bytes` to the file and fills it; gives the length. 0, with `bytes` empty, when the file can't be
// opened or read or is larger than 2,147,483,647 bytes.
std::int32_t ReadFileBytes(const QString &path, ByteArray &bytes);

// Makes `bytes` the whole file. An older file is replaced only by the complete new one: False on any error,
// with the older file as it was and nothing left beside it.
bool WriteFileBytes(const QString &path, ByteView bytes);

// Deletes the file, ignoring errors; True when FileExists is False afterwards.
bool DeleteFile(const QString &path);

// True when `path` is not empty, holds no "*" and no "?", and names an existing entry that is not a folder.
bool FileExists(const QString &path);

// True when `path` names an existing folder; hidden ones count.
bool FolderExists(const QString &path);

// Creates every missing folder along `path`; a level that ends in ":" (a drive) is skipped. False when one
// can't be created; those above it stay.
bool MakePath(const QString &path);

} // namespace wb
