#include "writers.h"

#include <QDataStream>
#include <QIODevice>

#include <algorithm>
#include <array>
#include <climits>

namespace wb
{

namespace
{

// Flags of the header as Microsoft's "DDS_HEADER" and "DDS_PIXELFORMAT" pages name them.
constexpr quint32 CapsHeightWidthFormat = 0x1007;
constexpr quint32 HasPitch = 0x8;
constexpr quint32 HasLinearSize = 0x80000;
constexpr quint32 FormatFourCc = 0x4;
constexpr quint32 FormatRgbWithAlpha = 0x41;
constexpr quint32 SurfaceTexture = 0x1000;
constexpr quint32 FourCcDxt1 = 0x31545844;

void WriteDdsHeader(QDataStream &out, const QImage &image, quint32 sizeFlag, quint32 pitchOrSize,
                    const std::array<quint32, 7> &pixelFormat)
{
    out.setByteOrder(QDataStream::LittleEndian);
    out.writeRawData("DDS ", 4);
    out << quint32(124) << (CapsHeightWidthFormat | sizeFlag) << quint32(image.height())
        << quint32(image.width()) << pitchOrSize;
    for (int unused = 0; unused < 13; ++unused) // depth, mip levels, reserved
        out << quint32(0);
    out << quint32(32);
    for (const quint32 field : pixelFormat)
        out << field;
    out << SurfaceTexture;
    for (int unused = 0; unused < 4; ++unused)
        out << quint32(0);
}

quint16 To565(QRgb colour)
{
    return quint16((qRed(colour) >> 3) << 11 | (qGreen(colour) >> 2) << 5 | qBlue(colour) >> 3);
}

std::array<int, 3> From565(quint16 packed)
{
    const int red = packed >> 11, green = packed >> 5 & 63, blue = packed & 31;
    return {red << 3 | red >> 2, green << 2 | green >> 4, blue << 3 | blue >> 2};
}

// Ends of the line are the darkest and the brightest pixel of the block; each pixel takes the nearest of the
// four colours on it.
void WriteBlock(QDataStream &out, const std::array<QRgb, 16> &block)
{
    const auto [darkest, brightest] =
        std::minmax_element(block.begin(), block.end(), [](QRgb a, QRgb b) { return qGray(a) < qGray(b); });
    quint16 first = To565(*brightest), second = To565(*darkest);
    // The first end is the larger number in the mode without transparency.
    if (first < second)
        std::swap(first, second);
    const std::array<int, 3> from = From565(first), to = From565(second);
    quint32 indexes = 0;
    for (int pixel = 15; pixel >= 0; --pixel) {
        static constexpr int weights[4] = {3, 0, 2, 1}; // of the first end, in thirds
        int best = 0, bestError = INT_MAX;
        // Equal ends mean the other mode, whose first three colours are then all the same.
        for (int index = 0; index < (first == second ? 1 : 4); ++index) {
            const int channels[3] = {qRed(block[pixel]), qGreen(block[pixel]), qBlue(block[pixel])};
            int error = 0;
            for (int c = 0; c < 3; ++c) {
                const int mixed = (from[c] * weights[index] + to[c] * (3 - weights[index])) / 3;
                error += (channels[c] - mixed) * (channels[c] - mixed);
            }
            if (error < bestError) {
                bestError = error;
                best = index;
            }
        }
        indexes = indexes << 2 | quint32(best);
    }
    out << first << second << indexes;
}

void WriteDatText(QDataStream &out, const QString &text)
{
    for (const QChar unit : text)
        out << quint16(unit.unicode());
    out << quint16(0);
}

void WriteDatBlock(QDataStream &out, const DatItem &block)
{
    out << quint8(block.isPairs ? 0 : 1) << quint32(block.items.size());
    quint32 id = 0;
    for (const DatItem &item : block.items) {
        const bool isBlock = !item.items.isEmpty();
        if (!block.isPairs)
            out << ++id << quint32(0);
        out << quint8(isBlock ? 2 : 1);
        WriteDatText(out, item.name);
        if (isBlock)
            WriteDatBlock(out, item);
        else
            WriteDatText(out, item.value);
    }
}

} // namespace

QByteArray WriteDds32(const QImage &image)
{
    const QImage source = image.convertToFormat(QImage::Format_ARGB32);
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    WriteDdsHeader(out, source, HasPitch, quint32(source.width()) * 4,
                   {FormatRgbWithAlpha, 0, 32, 0x00FF0000, 0x0000FF00, 0x000000FF, 0xFF000000});
    for (int y = 0; y < source.height(); ++y)
        for (int x = 0; x < source.width(); ++x)
            out << quint32(source.pixel(x, y));
    return bytes;
}

QByteArray WriteDdsDxt1(const QImage &image)
{
    const int columns = (image.width() + 3) / 4, rows = (image.height() + 3) / 4;
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    WriteDdsHeader(out, image, HasLinearSize, quint32(columns) * quint32(rows) * 8,
                   {FormatFourCc, FourCcDxt1, 0, 0, 0, 0, 0});
    for (int row = 0; row < rows; ++row)
        for (int column = 0; column < columns; ++column) {
            std::array<QRgb, 16> block{};
            for (int i = 0; i < 16; ++i)
                block[i] = image.pixel(std::min(column * 4 + i % 4, image.width() - 1),
                                       std::min(row * 4 + i / 4, image.height() - 1));
            WriteBlock(out, block);
        }
    return bytes;
}

QByteArray WritePsd(const QImage &image)
{
    const QImage source = image.convertToFormat(QImage::Format_RGB888);
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly); // big-endian, as the format is
    out.writeRawData("8BPS", 4);
    out << quint16(1) << quint32(0) << quint16(0) << quint16(3) << quint32(source.height())
        << quint32(source.width()) << quint16(8) << quint16(3);
    // No colour table, no image resources, no layers; then the merged picture, compression 0.
    out << quint32(0) << quint32(0) << quint32(0) << quint16(0);
    for (int channel = 0; channel < 3; ++channel)
        for (int y = 0; y < source.height(); ++y)
            for (int x = 0; x < source.width(); ++x)
                out << source.constScanLine(y)[x * 3 + channel];
    return bytes;
}

QByteArray WriteDat(const DatItem &root)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out.setByteOrder(QDataStream::LittleEndian);
    WriteDatBlock(out, root);
    return bytes;
}

} // namespace wb
