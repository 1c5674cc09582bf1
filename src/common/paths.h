// Parts of a path of the program. Pure text, no file is touched; names are separated by "\".
#pragma once

#include <QString>

namespace wb
{

// Everything before the last "\" (empty when there is none); a bare drive gets its "\" back: C:\a gives C:\.
QString GetFolder(const QString &path);

// Everything after the last "\"; the whole text when there is none.
QString GetFileName(const QString &path);

// GetFileName without the part from its last "." on.
QString GetFileTitle(const QString &path);

// Everything after the last "." of the whole path, even one in a folder's name; empty when there is none.
QString GetExtension(const QString &path);

// Each "\\" becomes one "\", in one pass from the left: four in a row leave two.
QString NormalizePath(const QString &path);

// `name` in `folder`; alone when there is no folder.
QString PathIn(const QString &folder, const QString &name);

} // namespace wb
