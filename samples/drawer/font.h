// A font of signs that nobody has ever read.
#pragma once

#include <QByteArray>

namespace wb
{

// The bytes of an AFT file: a blank and 40 signs with smooth edges, lines 24 pixels high.
QByteArray DrawFont();

} // namespace wb
