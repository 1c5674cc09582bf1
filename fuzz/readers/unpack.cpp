// An archive that is unpacked: nothing may come to lie beside the target folder.
#include "fuzz/support/scratch.h"
#include "fuzz/support/silent.h"
#include "fuzz/support/target.h"

#include "archive/unpackjob.h"

void wb::FuzzOne(ByteView bytes)
{
    const QString archive = ScratchFile("archive.pkg", bytes);
    SilentProgress progress;
    UnpackJob job(progress, 1);
    job.Run({.ArchivePath = archive, .TargetFolder = Scratch().Path(QStringLiteral("out"))}, SilentReport());
    std::filesystem::remove_all(Scratch().Native("out"));
    Require(Scratch().EntryCount() == 1, "all that was unpacked lies in its folder");
}
