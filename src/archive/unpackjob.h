// Extracts an archive, or one folder of it, into a folder on disk.
#pragma once

#include "archive/archivejob.h"
#include "archive/pkgreader.h"

namespace wb
{

class UnpackTarget;

struct UnpackOrder {
    QString ArchivePath;          // opened for the job, unless an open archive is given
    QString TargetFolder;         // "C:\x"; made when it is missing
    PkgHandle Archive;            // one that is open already
    std::int32_t StartOffset = 0; // of the directory to extract from the open archive
    QString LogPrefix;            // in front of every path in the log
};

class UnpackJob : public ArchiveJob
{
public:
    using ArchiveJob::ArchiveJob;

    // Runs to the end. The log has one line a folder ("FLDR: ") and file ("FILE:  ", "ZL02: "), "ERR: " lines
    // for what could not be extracted whole, and a last line that tells how the job ended. Existing files are
    // replaced; links below the target folder are never followed. Must not be called while busy.
    JobEnd Run(const UnpackOrder &order, const JobReport &report);

private:
    enum class Error { None, NotFound, NotOpened, BadTarget };

    void UnpackArchive(const UnpackOrder &order);
    void UnpackFolder(PkgWalk &walk, std::int32_t offset, const UnpackTarget &target, const QString &prefix);
    void UnpackEntry(PkgWalk &walk, const PkgEntry &entry, const UnpackTarget &target,
                     const QString &logPath);
    void UnpackFile(const PkgEntry &entry, const UnpackTarget &target, const QString &logPath);
    void FailWith(Error error, const QString &boxText);
    void LogEnd(const UnpackOrder &order);

    Error m_error = Error::None;
    PkgHandle m_archive; // while busy
    ByteArray m_data;    // of the entry that is being extracted; kept to be filled again
};

} // namespace wb
