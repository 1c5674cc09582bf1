// Writers of the formats that no library at hand writes. Alpha is dropped where a picture's format has none
// in the form used here. Each returns the bytes of the whole file.
#pragma once

#include <QByteArray>
#include <QImage>
#include <QList>
#include <QString>

namespace wb
{

// DirectDraw Surface, 32 bits a pixel uncompressed (B, G, R, A).
QByteArray WriteDds32(const QImage &image);

// DirectDraw Surface, DXT1 (BC1) without transparency; sizes that are no multiple of 4 repeat their last
// pixels.
QByteArray WriteDdsDxt1(const QImage &image);

// Adobe Photoshop, the merged picture only: 8-bit RGB planes, raw.
QByteArray WritePsd(const QImage &image);

// An item of the game's data files: a value, or a block of further items. In a block of pairs the items have
// no numbers.
struct DatItem {
    QString name;
    QString value;
    QList<DatItem> items;
    bool isPairs = false; // its items are
};

// A data file, plain, of the items that the root block holds.
QByteArray WriteDat(const DatItem &root);

} // namespace wb
