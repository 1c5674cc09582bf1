// What the commands that turn pictures into the game's formats share.
#pragma once

#include "anim/framejob.h"
#include "gfx/framebuf.h"

#include <QString>
#include <QStringList>

#include <functional>

namespace wb::cli
{

class FrameProgress;

// The largest coordinate that the formats' pages take.
inline constexpr int LargestPlace = 99999;

inline constexpr int LastGiType = 4; // of those that can be written

// Why the picture can't be written as that type; empty when it can.
QString TypeProblem(const FrameBuf &picture, int type);

// Reads PNG files as they are named on the command line, in the first stage of the progress, and hands each
// to `take`, which gives what is wrong with it, if anything. Says so for the first that is refused or is no
// PNG, and gives false.
bool ReadPngs(const QStringList &sources, FrameProgress &progress,
              const std::function<QString(FrameBuf)> &take);

// The exit status when saving has ended so; says why when it failed.
int StatusOf(SaveEnd end, const QString &target);

} // namespace wb::cli
