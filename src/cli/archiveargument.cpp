#include "cli/archiveargument.h"

#include "cli/command.h"

#include <QStringList>

#include <algorithm>

namespace wb::cli
{

namespace
{

QString InsidePath(QString path)
{
    return path.replace(u'/', u'\\').split(u'\\', Qt::SkipEmptyParts).join(u'\\');
}

std::optional<PkgEntry> Find(const PkgArchive &archive, const QString &path, bool isFolder)
{
    const PkgEntryList tree = PkgReadTree(archive, archive.RootOffset);
    for (const Qt::CaseSensitivity letters : {Qt::CaseSensitive, Qt::CaseInsensitive}) {
        const auto found = std::ranges::find_if(tree, [&](const PkgEntry &entry) {
            return (entry.Type == PkgFolder) == isFolder && entry.FullPath().compare(path, letters) == 0;
        });
        if (found != tree.end())
            return *found;
    }
    return std::nullopt;
}

} // namespace

PkgHandle OpenArchive(const QString &argument)
{
    FileError error = FileError::None;
    PkgHandle archive = PkgOpenRead(FromArgument(argument), error);
    if (archive == nullptr)
        Fail(argument, QStringLiteral("can't be read"));
    else if (!IsArchive(*archive)) {
        Fail(argument, QStringLiteral("is no archive that can be read"));
        archive = nullptr;
    }
    return archive;
}

bool IsArchive(const PkgArchive &archive)
{
    return archive.RootOffset >= PkgHeaderSize &&
           archive.RootOffset <= archive.File.Size() - PkgDirectoryHeaderSize;
}

std::optional<PkgEntry> FindFile(const QString &archiveArgument, const PkgArchive &archive,
                                 const QString &path)
{
    std::optional<PkgEntry> file = Find(archive, InsidePath(path), false);
    if (!file)
        Fail(archiveArgument, QStringLiteral("has no file %1").arg(path));
    return file;
}

std::optional<PkgEntry> FindFolder(const QString &archiveArgument, const PkgArchive &archive,
                                   const QString &path)
{
    const QString inside = InsidePath(path);
    if (inside.isEmpty()) {
        PkgEntry root;
        root.Type = PkgFolder;
        root.Offset = archive.RootOffset;
        return root;
    }
    std::optional<PkgEntry> folder = Find(archive, inside, true);
    if (!folder)
        Fail(archiveArgument, QStringLiteral("has no folder %1").arg(path));
    return folder;
}

} // namespace wb::cli
