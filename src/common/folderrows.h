// What a file list shows and where it leads, without the list.
//
// `path` is the folder shown, as NormalizeListPath gives it; the empty path is the list of drives.
#pragma once

#include "platform/drives.h"

#include <QString>
#include <QStringList>
#include <cstdint>
#include <vector>

namespace wb
{

enum RowKind : std::int32_t { RowUp = -1, RowDrive = 0, RowFolder = 1, RowFile = 2 };

// What DataType asks for; any other value lists both.
enum ListDataType : std::int32_t { ListFoldersOnly = 1, ListFilesOnly = 2 };

// Places in the set of row pictures: drives of type 2 to 6 first, one for each pattern last.
enum RowPicture : std::int32_t {
    PictureDrives = 0,
    PictureRamDrive = 4,
    PictureFolder = 5,
    PictureUp = 6,
    PicturePatterns = 7
};

struct FolderRow {
    QString Text; // what the row shows
    QString Name; // drive: "C:\"; folder, file: its name; ".." row: ".."
    std::int32_t Kind = RowFile;
    std::int32_t Picture = PicturePatterns;
};

using FolderRows = std::vector<FolderRow>;

// `path` as a list stores it: absolute (a relative one is put behind `programFolder`), single backslashes,
// every ".." resolved (above a drive lies the list of drives), a bare drive with its backslash.
QString NormalizeListPath(const QString &path, const QString &programFolder);

// `path`, or the nearest folder above it that exists; empty when even its drive does not.
QString NearestFolder(const QString &path, const QString &programFolder);

// One row a drive, in letter order.
FolderRows DriveRows(const DriveTable &drives);
FolderRows ListDriveRows();

// The ".." row and the folders (unless files only), then for each of `patterns` in turn the files that it
// matches (unless folders only), each in the order of the names. Hidden folders are listed, hidden files are
// not. A folder that can't be listed gives the ".." row alone.
FolderRows ListFolderRows(const QString &path, const QStringList &patterns, std::int32_t dataType);

// The rows of any path, the empty one included; `pattern` holds patterns separated by ";".
FolderRows ListRows(const QString &path, const QString &pattern, std::int32_t dataType);

// Whether a new listing is worth showing: another number of rows, or another text in any place.
bool RowsDiffer(const FolderRows &before, const FolderRows &after);

// The name by which the selected row is found again after the rows were replaced.
QString ReselectName(const FolderRow &selected);

// The first row from `first` on whose Name is `name`, ignoring case when none is just that; -1 for none.
std::int32_t FindName(const FolderRows &rows, const QString &name, std::int32_t first);

// That of all rows, else the first row; -1 when there are no rows.
std::int32_t FindRow(const FolderRows &rows, const QString &name);

// Where opening a row leads.
struct OpenedRow {
    bool PathChanges = false; // false for a file: the list stays
    QString Path;             // the folder to show
    QString SelectName;       // for FindRow in the new rows
};

OpenedRow OpenRow(const FolderRow &row, const QString &path, const QString &programFolder);

} // namespace wb
