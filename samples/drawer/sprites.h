// What people made, drawn with the painter. All pictures are 32-bit with alpha not premultiplied unless said.
#pragma once

#include <QColor>
#include <QImage>

namespace wb
{

// A ship seen from above, nose to the right, with graded edges and a glow behind its engines; 240 x 180.
QImage DrawShip(const QColor &hull, const QColor &trim);

enum class ButtonState { Normal, Hover, Pressed, Disabled };

// A rounded button with an arrow and a soft shadow; 120 x 48.
QImage DrawButton(ButtonState state);

// A captain in a picture of at most 256 colours, of which one is fully transparent; 128 x 160, 8-bit indexed.
QImage DrawPortrait();

// An opaque screen on which a beam goes round once in `frames` pictures and lights what it passes; 160 x 160.
QImage DrawRadar(int frame, int frames);

} // namespace wb
