// Writers of the two formats that the picture library knows only how to read. Alpha is dropped where the
// format's form here has none. Each returns the bytes of the whole file.
#pragma once

#include <QByteArray>
#include <QImage>

namespace wb
{

// DirectDraw Surface, 32 bits a pixel uncompressed (B, G, R, A).
QByteArray WriteDds32(const QImage &image);

// DirectDraw Surface, DXT1 (BC1) without transparency; sizes that are no multiple of 4 repeat their last
// pixels.
QByteArray WriteDdsDxt1(const QImage &image);

// Adobe Photoshop, the merged picture only: 8-bit RGB planes, raw.
QByteArray WritePsd(const QImage &image);

} // namespace wb
