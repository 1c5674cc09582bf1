// What a folder holds.
#pragma once

#include "platform/fileio.h"

#include <QString>
#include <cstdint>
#include <string>
#include <vector>

namespace wb
{

enum class EntryKind : std::uint8_t { File, Folder };

struct FolderEntry {
    QString Name;
    EntryKind Kind = EntryKind::File;

    bool IsHidden() const { return Name.startsWith(u'.'); }
};

// Replaces `entries` with the files and folders in the native path `folder`, "." and ".." left out, in the
// order of their upper-case names, equal ones in the order of the names themselves. Links count as what they
// lead to; devices, pipes and links that lead nowhere are left out. Empty on an error.
FileError ScanFolder(const std::string &folder, std::vector<FolderEntry> &entries);

} // namespace wb
