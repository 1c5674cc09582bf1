// A GI file as a document of the viewer.
#pragma once

#include "common/bytearray.h"
#include "gfx/frameset.h"

#include <cstdint>

namespace wb
{

// Decodes the GI that starts at `offset` into a document of one picture; an empty document when there is none.
FrameSet OpenGiDocument(ByteView buffer, std::int32_t offset);

} // namespace wb
