// Packs a folder tree into an archive.
#pragma once

#include "archive/archivejob.h"
#include "archive/pkgformat.h"

namespace wb
{

struct PackOrder {
    QString ArchivePath; // replaced when it is there
    QString Folder;
    bool StoreOnly = false; // compress nothing
};

class PackJob : public ArchiveJob
{
public:
    // `threads` compress at once, the caller's among them; the archive's bytes do not depend on their number.
    PackJob(Progress &progress, int threads);

    // Runs to the end. The log has one line a folder ("FLDR: ") and file ("FILE:  ", "ZL02: "), "ERR: "
    // lines, and lines that tell the compression reached and how the job ended. An older archive is lost only
    // when the new one is complete. Must not be called while busy.
    JobEnd Run(const PackOrder &order, const JobReport &report);

private:
    int m_threads;
};

} // namespace wb
