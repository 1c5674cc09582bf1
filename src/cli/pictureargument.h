// Pictures that a command turns into the game's formats, as they are named on the command line.
#pragma once

#include "gfx/framebuf.h"

#include <QString>

namespace wb::cli
{

// The largest coordinate that the formats' pages take.
inline constexpr int LargestPlace = 99999;

inline constexpr int LastGiType = 4; // of those that can be written

// Why the picture can't be written as that type; empty when it can.
QString TypeProblem(const FrameBuf &picture, int type);

} // namespace wb::cli
