// The PKG archive: a folder tree of game files in one file. All integers are signed 32-bit and little-endian,
// offsets count from the start of the file, texts are Windows-1251.
//
//   file       RootOffset, the offset of the root folder's directory
//   directory  170, the number of its records, 158, then the records
//   record     PackedSize, Size, the name in upper case (63 bytes, filled with zeroes), the name (likewise),
//              Type, Type again, 0, 0, Offset, 0
//
// At a file's Offset lie its length and its bytes (PkgStored; nothing when the Size is 0), or the length of
// its chunk stream and the stream (PkgPacked). A folder's Offset is that of its directory.
#pragma once

#include "common/bytearray.h"

#include <QString>

#include <cstdint>
#include <vector>

namespace wb
{

inline constexpr std::int32_t PkgHeaderSize = 4;
inline constexpr std::int32_t PkgDirectoryHeaderSize = 12;
inline constexpr std::int32_t PkgRecordSize = 158;
inline constexpr std::int32_t PkgNameSize = 63;

enum PkgEntryType : std::int32_t { PkgStored = 1, PkgPacked = 2, PkgFolder = 3 };

struct PkgEntry {
    QString Name;
    QString Folder; // the path of its folder inside the archive, ended by "\"; empty for the root
    std::int32_t Size = 0;
    std::int32_t PackedSize = 0;
    std::int32_t Offset = 0;
    std::int32_t Type = PkgStored;

    // Folders are parted by "\"; there is none in front and none behind.
    QString FullPath() const { return Folder + Name; }
};

using PkgEntryList = std::vector<PkgEntry>;

// True when the path's extension is "pkg", whatever its case.
bool IsPkgPath(const QString &path);

// A record's name: the bytes up to the first zero.
QString PkgReadName(ByteView field);

// The bytes of a directory, header and records.
ByteArray PkgDirectoryBytes(const PkgEntryList &list);

// The name that a reader finds after `name` was written: cut to 63 characters, "?" for those that the code
// page lacks.
QString PkgWrittenName(const QString &name);

// Whether an entry of this name may become a file or folder of that name on disk: not empty, not "." or "..",
// without "\", "/", ":" and control characters.
bool IsSafeEntryName(const QString &name);

// The name, with "_" for whatever makes it unsafe.
QString SafeEntryName(QString name);

} // namespace wb
