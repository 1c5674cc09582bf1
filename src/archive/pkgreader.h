// Reading PKG archives. Whatever the file holds: reading stops at its end, every walk through its folders
// ends, and the memory taken is in proportion to the file.
#pragma once

#include "archive/pkgformat.h"
#include "platform/fileio.h"

#include <memory>
#include <set>

namespace wb
{

struct PkgArchive {
    InputFile File;
    std::int32_t RootOffset = 0;
};

// An open archive is shared by whoever reads it; every read names its own offset.
using PkgHandle = std::shared_ptr<const PkgArchive>;

// Opens an archive; gives no handle and the reason in `error` when its file can't be opened.
PkgHandle PkgOpenRead(const QString &path, FileError &error);

// One walk through the folders of an archive. It enters no directory twice, none whose path has more than
// 4,096 characters, and reads no more records than the file can hold.
class PkgWalk
{
public:
    explicit PkgWalk(const PkgArchive &archive);

    // Whether the walk may enter the directory at `position`, whose path is `folder` (ended by "\", empty for
    // the first one).
    bool MayEnter(std::int32_t position, const QString &folder) const;

    // The directory, in its own order, each entry with `folder` as its Folder. Records of a type that is none
    // are left out. Empty when the walk may not enter it.
    PkgEntryList Enter(std::int32_t position, const QString &folder);

    // Whether the last call of Enter read every record that its directory states.
    bool IsWhole() const { return m_isWhole; }

private:
    const PkgArchive &m_archive;
    bool m_isWhole = true;
    std::int64_t m_recordsLeft;
    std::set<std::int32_t> m_entered;
};

// Every entry below the directory at `position`: its own entries in their order, then for each of its folders
// in that order the same again. The entries of one folder so stand next to each other. A folder that the walk
// may not enter has the Offset 0, where no directory can be.
PkgEntryList PkgReadTree(const PkgArchive &archive, std::int32_t position);

// The children of `folder` ("a\b", "a\b\"; "" or "\" for the root; in any case), folders first, both groups
// sorted by their upper-case paths.
PkgEntryList PkgListFolder(const PkgEntryList &tree, const QString &folder);

// Replaces `data` with the bytes of a file; a folder and an empty file leave it as it was. What is damaged is
// read as far as it goes. True when everything was there.
bool PkgReadEntryData(const PkgArchive &archive, ByteArray &data, const PkgEntry &entry);

} // namespace wb
