// Bytes as a file, for what reads or writes files only.
#pragma once

#include "support/tempfolder.h"

namespace wb
{

// A folder that lasts as long as the target runs.
inline const TempFolder &Scratch()
{
    static const TempFolder folder;
    return folder;
}

// Makes the bytes the file of that name, and gives its path.
inline QString ScratchFile(const char *name, ByteView bytes)
{
    Scratch().Put(name, {reinterpret_cast<const char *>(bytes.data()), bytes.size()});
    return Scratch().Path(QString::fromLatin1(name));
}

} // namespace wb
