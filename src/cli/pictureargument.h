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

// Hands the files named on the command line to `read`, which gives what is wrong with one, if anything, in
// the first stage of the progress. Says so for the first that is refused, and gives false.
bool ReadSources(const QStringList &sources, FrameProgress &progress,
                 const std::function<QString(const QString &source)> &read);

// The same for PNG files. What is no PNG is refused, others are handed over to `take`.
bool ReadPngs(const QStringList &sources, FrameProgress &progress,
              const std::function<QString(FrameBuf)> &take);

// The exit status when saving has ended so; says why when it failed.
int StatusOf(SaveEnd end, const QString &target);

} // namespace wb::cli
