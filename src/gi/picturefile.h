// Pictures of files that the user chooses.
#pragma once

#include "gfx/framebuf.h"

#include <QString>

namespace wb
{

// The picture of a PNG, at (0, 0), with its transparency class; an empty one when the file is none.
FrameBuf ReadPng(const QString &path);

// The same for a PNG or a GI; a GI keeps its place, and its Kind tells that it is one.
FrameBuf ReadPngOrGi(const QString &path);

// Writes a 32-bit picture as a PNG, replacing what is there only when the new file is complete.
bool WritePng(const QString &path, const FrameBuf &picture);

} // namespace wb
