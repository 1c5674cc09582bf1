// Archives and what lies in them, as they are named on the command line.
#pragma once

#include "archive/pkgreader.h"

#include <QString>

#include <optional>

namespace wb::cli
{

// Opens the archive; without a handle when that fails, which it says.
PkgHandle OpenArchive(const QString &argument);

// Whether the file holds a root directory.
bool IsArchive(const PkgArchive &archive);

// What lies at `path` inside the archive; parted by "\" or "/", in any case unless there are several. Says so
// when there is none.
std::optional<PkgEntry> FindFile(const QString &archiveArgument, const PkgArchive &archive,
                                 const QString &path);
// The same for a folder, of which the root ("", "\") is one.
std::optional<PkgEntry> FindFolder(const QString &archiveArgument, const PkgArchive &archive,
                                   const QString &path);

} // namespace wb::cli
