// Opens any supported file as a document.
#pragma once

#include "common/bytearray.h"
#include "gfx/frameset.h"

#include <QString>

namespace wb
{

// Opens a file by its first bytes. What no reader can read gives an empty document.
FrameSet OpenDocumentFile(const QString &path);

// The same for bytes in memory, such as an entry of an archive.
FrameSet OpenDocumentBuffer(ByteView bytes);

} // namespace wb
