// Packs a folder tree into an archive.
#pragma once

#include "archive/archivejob.h"
#include "archive/packplan.h"
#include "archive/workers.h"
#include "platform/fileio.h"

namespace wb
{

class PackAhead;
struct PackedFile;

struct PackOrder {
    QString ArchivePath; // replaced when it is there
    QString Folder;
    bool StoreOnly = false; // compress nothing
};

class PackJob : public ArchiveJob
{
public:
    // So many `threads` compress, the caller's among them; the archive's bytes do not depend on their number.
    explicit PackJob(Progress &progress, int threads = CoreCount()) : ArchiveJob(progress), m_threads(threads)
    {
    }

    // Runs to the end. The log has one line a folder ("FLDR: ") and file ("FILE:  ", "ZL02: "), "ERR: "
    // lines, and last lines that tell the compression reached and how the job ended. An older archive is lost
    // only when the new one is complete: that of an aborted job gets a name of its own beside it. Must not be
    // called while busy.
    JobEnd Run(const PackOrder &order, const JobReport &report);

private:
    enum class Error { None, NotCreated, NotReplaced, BadFolder, NotWritten, TooLarge };

    void PackArchive(const PackOrder &order);
    bool OpenArchive(const PackOrder &order);
    void WriteTree(const PackPlan &plan);
    void WriteFolder(PackAhead &ahead, const PackFolder &folder, const QString &logPrefix);
    PkgEntry WriteItem(PackAhead &ahead, const PackItem &item, const QString &logPath);
    void WriteFile(PkgEntry &entry, const QString &logPath, const PackedFile &file);
    bool Reserve(std::int64_t size);
    bool WriteAt(std::int64_t offset, ByteView bytes);
    void FailWith(Error error, const QString &boxText);
    void LogEnd(const PackOrder &order);

    int m_threads;
    Error m_error = Error::None;
    OutputFile m_file;
    std::int64_t m_end = 0; // of the archive as far as it is laid out
    std::int64_t m_totalIn = 0;
    std::int64_t m_totalOut = 0;
};

} // namespace wb
