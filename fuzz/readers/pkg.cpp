// An archive as the viewer browses it.
#include "fuzz/support/scratch.h"
#include "fuzz/support/target.h"

#include "archive/pkgreader.h"

void wb::FuzzOne(ByteView bytes)
{
    FileError error = FileError::None;
    const PkgHandle archive = PkgOpenRead(ScratchFile("archive.pkg", bytes), error);
    if (archive == nullptr)
        return;
    const PkgEntryList tree = PkgReadTree(*archive, archive->RootOffset);
    Require(tree.size() <= bytes.size() / PkgRecordSize, "no more entries than the file holds");
    PkgListFolder(tree, {});
    for (const PkgEntry &entry : tree) {
        ByteArray data;
        if (entry.Type == PkgFolder)
            PkgListFolder(tree, entry.FullPath());
        else
            PkgReadEntryData(*archive, data, entry);
    }
}
