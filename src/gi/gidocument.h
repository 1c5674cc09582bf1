// GI files as pictures and as documents of the viewer.
#pragma once

#include "common/bytearray.h"
#include "gfx/framebuf.h"
#include "gfx/frameset.h"

#include <QString>

#include <cstdint>

namespace wb
{

// Decodes the GI that starts at `offset` into a document of one picture; an empty document when there is
// none.
FrameSet OpenGiDocument(ByteView buffer, std::int32_t offset);

// The picture of a GI file; an empty one when the file can't be read or is no GI.
FrameBuf LoadGiFile(const QString &path);

} // namespace wb
