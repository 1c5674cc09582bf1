// What a pack job is going to write: the tree on disk, in the archive's order.
#pragma once

#include "archive/pkgformat.h"
#include "platform/fileio.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace wb
{

struct PackFolder;

struct PackItem {
    PkgEntry Entry; // Name and Type; a file is PkgPacked when it is to be compressed
    QString Path;   // on disk
    std::string Native;
    std::int64_t Size = 0;
    std::unique_ptr<PackFolder> Folder; // for a folder
};

struct PackFolder {
    std::vector<PackItem> Items; // folders first, both groups in the order of their names
    std::vector<QString> Errors; // what an archive can't hold as it is, for the log
};

// True for a file that gains nothing from compression: shorter than 128 bytes, or one whose extension is part
// of "jpg;jpe;jpeg;png" in any case (none at all is part of it too).
bool SkipCompression(const QString &path, std::int64_t length);

class PackPlan
{
public:
    struct Options {
        QString Folder;
        bool StoreOnly = false;
        FileFacts Archive; // an older one that is to be replaced; it does not become part of itself
    };

    // Lists the whole tree. `goesOn` is asked after each folder; nothing more is listed once it gives false.
    // A folder in it that can't be listed is empty, with a line in its Errors.
    PackPlan(Options options, std::function<bool()> goesOn);
    PackPlan(const PackPlan &) = delete;
    PackPlan &operator=(const PackPlan &) = delete;

    FileError Error() const { return m_error; } // of listing the root
    const PackFolder &Root() const { return m_root; }

    // The files in the order in which the archive has them.
    const std::vector<const PackItem *> &Files() const { return m_files; }
    std::int32_t ItemCount() const { return m_items; }
    std::int64_t ByteCount() const { return m_bytes; }

private:
    void ListFolderForPack(PackFolder &folder, const QString &path, const std::string &native,
                           const QString &logPrefix);
    void AddFolder(PackFolder &folder, PackItem item, const QString &logPrefix);
    void AddFile(PackFolder &folder, PackItem item);

    Options m_options;
    std::function<bool()> m_goesOn;
    bool m_isStopped = false;
    std::vector<FileFacts> m_enclosing; // the folders that the one being listed lies in
    FileError m_error = FileError::None;
    PackFolder m_root;
    std::vector<const PackItem *> m_files;
    std::int32_t m_items = 0;
    std::int64_t m_bytes = 0;
};

} // namespace wb
