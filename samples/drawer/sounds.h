// Sounds that are worked out sample by sample.
#pragma once

#include <QByteArray>

namespace wb
{

// A ray gun's shot as a WAV: 16-bit, mono, 22,050 Hz.
QByteArray MakeShot();

// Some bars of music as an MP3: stereo, 44,100 Hz.
QByteArray MakeMusic();

} // namespace wb
