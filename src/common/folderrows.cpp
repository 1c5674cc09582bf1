#include "common/folderrows.h"

#include "common/files.h"
#include "common/paths.h"
#include "common/wildcard.h"
#include "platform/folderscan.h"
#include "platform/nativepath.h"

#include <algorithm>

namespace wb
{

namespace
{

constexpr QChar Separator = u'\\';
constexpr QLatin1String Up("\\..");

QString DriveText(const Drive &drive)
{
    const QString letter = QLatin1Char(drive.Letter) + QStringLiteral(":)");
    if (!drive.Label.isEmpty() && drive.Letter != 'A')
        return drive.Label + QStringLiteral(" (") + letter;
    switch (drive.Type) {
    case DriveRemovable:
        return (drive.Letter <= 'B' ? QStringLiteral("Дисковод 3,5 (") : QStringLiteral("Съемный диск (")) +
               letter;
    case DriveNetwork:
        return QStringLiteral("Сетевой диск (") + letter;
    case DriveOptical:
        return QStringLiteral("CD дисковод (") + letter;
    case DriveRam:
        return QStringLiteral("RAM диск (") + letter;
    default:
        return QStringLiteral("Локальный диск (") + letter;
    }
}

std::int32_t DrivePicture(const Drive &drive)
{
    const bool isFloppy = drive.Letter <= 'B';
    return drive.Type == DriveRemovable && !isFloppy ? PictureRamDrive
                                                     : PictureDrives + drive.Type - DriveRemovable;
}

FolderRow EntryRow(const QString &name, RowKind kind, std::int32_t picture)
{
    return {DisplayName(name), name, kind, picture};
}

// The place of the first "\.." that is a whole name; -1 for none.
qsizetype FindUp(const QString &path)
{
    qsizetype at = path.indexOf(Up);
    while (at >= 0 && at + Up.size() < path.size() && path[at + Up.size()] != Separator)
        at = path.indexOf(Up, at + 1);
    return at;
}

} // namespace

QString NormalizeListPath(const QString &path, const QString &programFolder)
{
    if (path.isEmpty())
        return path;
    QString normal = path;
    if (path.size() < 2 || path[1] != u':')
        normal = programFolder + Separator + path;
    while (normal.contains(QStringLiteral("\\\\")))
        normal = NormalizePath(normal);
    for (qsizetype at = FindUp(normal); at >= 0; at = FindUp(normal)) {
        const qsizetype before = at > 2 ? normal.lastIndexOf(Separator, at - 1) : -1;
        if (before < 0)
            return {};
        normal.remove(before, at + Up.size() - before);
    }
    return normal.size() == 2 ? normal + Separator : normal;
}

QString NearestFolder(const QString &path, const QString &programFolder)
{
    QString nearest = path;
    while (!nearest.isEmpty() && !FolderExists(nearest))
        nearest = NormalizeListPath(nearest + Up, programFolder);
    return nearest;
}

FolderRows DriveRows(const DriveTable &drives)
{
    FolderRows rows;
    for (const Drive &drive : drives)
        rows.push_back({DriveText(drive), QLatin1Char(drive.Letter) + QStringLiteral(":\\"), RowDrive,
                        DrivePicture(drive)});
    return rows;
}

FolderRows ListDriveRows()
{
    return DriveRows(ListDrives());
}

FolderRows ListFolderRows(const QString &path, const QStringList &patterns, std::int32_t dataType)
{
    // A folder that fails leaves no entries, so the ".." row stays alone.
    std::vector<FolderEntry> entries;
    ScanFolder(ToNativePath(path), entries);

    FolderRows rows;
    rows.reserve(entries.size() + 1);
    if (dataType != ListFilesOnly) {
        rows.push_back({QStringLiteral("..          "), QStringLiteral(".."), RowUp, PictureUp});
        for (const FolderEntry &entry : entries) {
            if (entry.Kind == EntryKind::Folder)
                rows.push_back(EntryRow(entry.Name, RowFolder, PictureFolder));
        }
    }
    for (qsizetype index = 0; index < patterns.size() && dataType != ListFoldersOnly; ++index) {
        const Wildcard pattern(patterns[index]);
        for (const FolderEntry &entry : entries) {
            if (entry.Kind == EntryKind::File && !entry.IsHidden() && pattern.Matches(entry.Name))
                rows.push_back(EntryRow(entry.Name, RowFile, PicturePatterns + std::int32_t(index)));
        }
    }
    return rows;
}

FolderRows ListRows(const QString &path, const QString &pattern, std::int32_t dataType)
{
    return path.isEmpty() ? ListDriveRows() : ListFolderRows(path, pattern.split(u';'), dataType);
}

bool RowsDiffer(const FolderRows &before, const FolderRows &after)
{
    const auto hasSameText = [](const FolderRow &left, const FolderRow &right) {
        return left.Text == right.Text;
    };
    return !std::equal(before.begin(), before.end(), after.begin(), after.end(), hasSameText);
}

QString ReselectName(const FolderRow &selected)
{
    const bool isEntry = selected.Kind == RowFolder || selected.Kind == RowFile;
    return isEntry ? selected.Name : selected.Text;
}

std::int32_t FindName(const FolderRows &rows, const QString &name, std::int32_t first)
{
    const auto start = rows.begin() + std::min<std::ptrdiff_t>(first, std::ssize(rows));
    for (const Qt::CaseSensitivity letters : {Qt::CaseSensitive, Qt::CaseInsensitive}) {
        const auto found = std::find_if(
            start, rows.end(), [&](const FolderRow &row) { return row.Name.compare(name, letters) == 0; });
        if (found != rows.end())
            return std::int32_t(found - rows.begin());
    }
    return -1;
}

std::int32_t FindRow(const FolderRows &rows, const QString &name)
{
    const std::int32_t row = FindName(rows, name, 0);
    return row < 0 && !rows.empty() ? 0 : row;
}

OpenedRow OpenRow(const FolderRow &row, const QString &path, const QString &programFolder)
{
    switch (row.Kind) {
    case RowDrive:
        return {true, row.Name, ReselectName(row)};
    case RowFolder: {
        const QString folder = NormalizeListPath(path + Separator + row.Name, programFolder);
        return {true, NearestFolder(folder, programFolder), ReselectName(row)};
    }
    case RowUp: {
        const QString left = path.endsWith(Separator) ? path : GetFileName(path);
        return {true, NearestFolder(NormalizeListPath(path + Up, programFolder), programFolder), left};
    }
    default:
        return {false, path, ReselectName(row)};
    }
}

} // namespace wb
