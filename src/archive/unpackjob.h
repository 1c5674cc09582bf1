// Extracts an archive, or one folder of it, into a folder on disk.
#pragma once

#include "archive/archivejob.h"
#include "archive/pkgreader.h"
#include "archive/unpackahead.h"
#include "archive/unpacktarget.h"
#include "archive/workers.h"

namespace wb
{

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
    // So many `threads` expand, the caller's among them.
    explicit UnpackJob(Progress &progress, int threads = CoreCount());
    ~UnpackJob();

    // Runs to the end. The log has one line a folder ("FLDR: ") and file ("FILE:  ", "ZL02: "), "ERR: " lines
    // for what could not be extracted whole, and a last line that tells how the job ended. Existing files are
    // replaced; links below the target folder are never followed. Must not be called while busy.
    JobEnd Run(const UnpackOrder &order, const JobReport &report);

private:
    enum class Error { None, NotFound, NotOpened, BadTarget };
    struct Step;

    void UnpackArchive(const UnpackOrder &order);
    bool OpenArchive(const UnpackOrder &order);
    // False when the directory, but for those in it, can't be read whole.
    bool ListSteps(PkgWalk &walk, std::int32_t position, const QString &folder);
    void UnpackSteps();
    bool UnpackEntry(const Step &step, const UnpackedFile &file);
    void UnpackFolder(const Step &step);
    void UnpackFile(const Step &step, const UnpackedFile &file);
    std::vector<const PkgEntry *> Files() const;
    void FailWith(Error error, const QString &boxText);
    void LogEnd(const UnpackOrder &order);

    int m_threads;
    Error m_error = Error::None;
    // While busy:
    PkgHandle m_archive;
    std::vector<Step> m_steps;
    std::vector<UnpackTarget> m_targets; // from the target folder down to the one being filled
};

} // namespace wb
