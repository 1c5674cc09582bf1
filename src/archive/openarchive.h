// The archive that is being browsed: its tree, the folder that is shown of it, and the ways between them.
#pragma once

#include "archive/pkgreader.h"

namespace wb
{

class OpenArchive
{
public:
    // Closes what was open, and opens the archive at its root folder. False, with nothing open and the reason
    // in Error, when it can't be opened.
    bool Open(const QString &path);
    void Close();

    FileError Error() const { return m_error; }          // of the last Open
    const PkgHandle &Handle() const { return m_handle; } // null when nothing is open
    const QString &Path() const { return m_path; }       // of the file; empty when nothing is open

    // The folder shown, empty for the root, and where that is: "C:\x.pkg\gfx".
    const QString &Folder() const { return m_folder; }
    QString Location() const;

    void ShowFolder(const QString &folder);

    // Shows the folder above the one shown. Gives the row of the folder left, -1 when it has none.
    int ShowParent();

    // What lies in the folder shown, and its entry in a row of the list: ".." is row 0, which has no entry.
    const PkgEntryList &Entries() const { return m_entries; }
    const PkgEntry *EntryOfRow(int row) const;

    // The bytes of a file; of a damaged one as many as can be read.
    ByteArray ReadEntry(const PkgEntry &entry) const;

private:
    FileError m_error = FileError::None;
    PkgHandle m_handle;
    QString m_path;
    QString m_folder;
    PkgEntryList m_tree;
    PkgEntryList m_entries;
};

} // namespace wb
