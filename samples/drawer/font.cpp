#include "font.h"

#include "gi/runcoder.h"
#include "noise.h"

#include <QDataStream>
#include <QIODevice>
#include <QImage>
#include <QList>
#include <QPainter>
#include <QPainterPath>

namespace wb
{

namespace
{

constexpr int GlyphCount = 41;
constexpr int LineHeight = 24;
constexpr int Margin = 2;
constexpr int CellHeight = LineHeight + 2 * Margin + 2;
constexpr int Baseline = LineHeight + Margin + 1;
constexpr int HeaderSize = 32;
constexpr int RecordSize = 64;
constexpr int LeftGap = 1;
constexpr int RightGap = 2;
constexpr int BlankWidth = 9;

struct Bitmap {
    int x = 0;
    int y = 0;
    QByteArray data;
};

struct Glyph {
    int width = BlankWidth;
    Bitmap solid;
    Bitmap edge;
};

// A stem with a few arms at heights that the sign's number throws, and a dot on some.
QImage DrawSign(int number, int width)
{
    const auto throwDie = [number](int die, int sides) {
        return int(Scatter(number, die, 17) * float(sides));
    };
    QPainterPath path;
    const double left = 3, right = width - 3, top = Margin + 3, step = 4.75;
    const double stem = throwDie(0, 3) == 0 ? (left + right) / 2 : left;
    path.moveTo(stem, top);
    path.lineTo(stem, top + 4 * step);
    for (int arm = 0; arm < 2 + number % 2; ++arm) {
        const double from = top + throwDie(3 * arm + 1, 5) * step, to = top + throwDie(3 * arm + 2, 5) * step;
        path.moveTo(throwDie(3 * arm + 3, 2) == 0 ? stem : left, from);
        path.quadTo(right, from, right, to);
    }
    QImage image(width, CellHeight, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.strokePath(path, QPen(Qt::black, 2.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    if (number % 5 == 2)
        painter.fillPath(
            [right, top] {
                QPainterPath dot;
                dot.addEllipse(QPointF(right - 1, top), 2, 2);
                return dot;
            }(),
            Qt::black);
    return image;
}

PixelMask MaskOf(const QImage &image, bool isSolid)
{
    PixelMask mask(image.width(), image.height());
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const int alpha = qAlpha(image.pixel(x, y));
            if (isSolid ? alpha == 255 : alpha > 0 && alpha < 255)
                mask.Row(y)[x / PixelMask::WordBits] |= 1ULL << x % PixelMask::WordBits;
        }
    return mask;
}

// The pixels of the mask, each with its alpha or, when they are solid, without.
template <int PixelBytes>
Bitmap CodeBitmap(const QImage &image)
{
    const PixelMask mask = MaskOf(image, PixelBytes == 0);
    const GiRect bounds = mask.Bounds();
    const auto width = std::int32_t(bounds.Width()), height = std::int32_t(bounds.Height());
    QByteArray data(rowrle::HeaderSize + height * qsizetype(MaxRowBytes(width)), '\0');
    auto *const start = reinterpret_cast<std::uint8_t *>(data.data());
    std::uint8_t *end = start + rowrle::HeaderSize;
    for (std::int32_t y = bounds.Top; y < bounds.Bottom; ++y)
        end = CodeRow<PixelBytes>(end, mask.Row(y), bounds.Left, bounds.Right,
                                  [&](std::uint8_t *target, std::int32_t x, std::size_t count) {
                                      for (std::size_t i = 0; i < count * PixelBytes; ++i)
                                          target[i] = std::uint8_t(qAlpha(image.pixel(x + int(i), y)));
                                  });
    data.resize(end - start);
    const auto rowBytes = std::uint32_t(data.size()) - rowrle::HeaderSize;
    rowrle::PutHeader(start, {rowBytes, std::uint32_t(width), std::uint32_t(height)});
    return {LeftGap + bounds.Left, bounds.Top - Baseline, data};
}

Glyph MakeGlyph(int number)
{
    Glyph glyph;
    if (number == 0)
        return glyph;
    glyph.width = 12 + number * 7 % 6;
    const QImage image = DrawSign(number, glyph.width);
    glyph.solid = CodeBitmap<0>(image);
    glyph.edge = CodeBitmap<1>(image);
    return glyph;
}

} // namespace

QByteArray DrawFont()
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out.setByteOrder(QDataStream::LittleEndian);
    out.writeRawData("aft", 4);
    out << qint32(1) << qint32(GlyphCount) << qint32(LineHeight) << qint32(Margin) << qint32(0) << qint32(0)
        << qint32(0);
    QByteArray data;
    for (int number = 0; number < GlyphCount; ++number) {
        const Glyph glyph = MakeGlyph(number);
        out << qint32(' ' + number) << qint32(LeftGap) << qint32(glyph.width) << qint32(RightGap);
        for (const Bitmap &bitmap : {glyph.solid, glyph.edge}) {
            const auto offset = qint32(HeaderSize + GlyphCount * RecordSize + data.size());
            out << qint32(bitmap.x) << qint32(bitmap.y) << qint32(0) << qint32(0) << offset
                << qint32(bitmap.data.size());
            data += bitmap.data;
        }
    }
    return bytes + data;
}

} // namespace wb
