#include "gi/giencoder.h"

#include "common/bytes.h"
#include "gfx/graphicslibrary.h"
#include "gfx/pixels.h"
#include "gi/giformat.h"
#include "gi/runcoder.h"
#include "rastgl/rows565.h"

#include <array>
#include <cstring>

namespace wb
{

namespace
{

constexpr std::int32_t MaxCodedType = 4;

std::int32_t Plus(std::int32_t edge, std::int64_t distance)
{
    return static_cast<std::int32_t>(edge + distance);
}

// The part of the picture as a rectangle of its canvas.
GiRect OnCanvas(const FrameBuf &picture, const GiRect &part)
{
    return {Plus(picture.X, part.Left), Plus(picture.Y, part.Top), Plus(picture.X, part.Right),
            Plus(picture.Y, part.Bottom)};
}

GiRect WholeOf(std::int32_t width, std::int32_t height)
{
    return {0, 0, width, height};
}

// Bounds of the pixels with any alpha, in the picture's own columns and rows.
GiRect ContentOf(const FrameBuf &picture)
{
    const GraphicsLibrary &graphics = Graphics();
    const std::uint8_t *pixels = picture.Pixels.data();
    return {graphics.VTGF_GetStartX_32(pixels, &picture.Width, &picture.Height),
            graphics.VTGF_GetStartY_32(pixels, &picture.Width, &picture.Height),
            graphics.VTGF_GetFinishX_32(pixels, &picture.Width, &picture.Height),
            graphics.VTGF_GetFinishY_32(pixels, &picture.Width, &picture.Height)};
}

const std::uint8_t *PixelsAt(const FrameBuf &picture, std::int64_t x, std::int64_t y)
{
    return picture.Pixels.data() + ((picture.Height - 1 - y) * picture.Width + x) * 4;
}

// The growing file: header and layer table, then layer after layer.
class GiWriter
{
public:
    GiWriter(ByteArray &out, const FrameBuf &picture, std::int32_t type, const PixelMasks &masks);

    // The next bytes of the layer's data; they count once Advance has passed them.
    std::uint8_t *Room(std::size_t bytes);
    void Advance(std::size_t bytes) { m_end += bytes; }
    std::size_t End() const { return m_end; }
    std::uint8_t *At(std::size_t position) { return m_out.data() + position; }

    // Enters all that has been written since `start` as the data of a layer.
    void EnterLayer(std::int32_t layer, std::size_t start, const GiRect &bounds);

    std::int32_t Finish();

private:
    void PutRect(std::int32_t position, const GiRect &rect);

    ByteArray &m_out;
    std::size_t m_end;
};

GiWriter::GiWriter(ByteArray &out, const FrameBuf &picture, std::int32_t type, const PixelMasks &masks)
    : m_out(out)
{
    const std::int32_t layers = GiLayerCount(type);
    m_end = std::size_t(GiHeaderSize + layers * GiLayerRecordSize);
    m_out.resize(std::max(m_out.size(), m_end));
    std::memset(m_out.data(), 0, m_end);
    PutLong(m_out, 0, GiMagic);
    PutLong(m_out, 4, GiVersion);
    PutRect(8, OnCanvas(picture, WholeOf(picture.Width, picture.Height)));
    PutLong(m_out, 24, masks.Red);
    PutLong(m_out, 28, masks.Green);
    PutLong(m_out, 32, masks.Blue);
    PutLong(m_out, 36, masks.Alpha);
    PutLong(m_out, 40, type);
    PutLong(m_out, 44, layers);
}

std::uint8_t *GiWriter::Room(std::size_t bytes)
{
    if (bytes > m_out.size() - m_end)
        m_out.resize(std::max(m_end + bytes, m_out.size() + m_out.size() / 2));
    return m_out.data() + m_end;
}

void GiWriter::EnterLayer(std::int32_t layer, std::size_t start, const GiRect &bounds)
{
    const std::int32_t record = GiHeaderSize + layer * GiLayerRecordSize;
    PutLong(m_out, record, static_cast<std::int32_t>(start));
    PutLong(m_out, record + 4, static_cast<std::int32_t>(m_end - start));
    PutRect(record + 8, bounds);
}

std::int32_t GiWriter::Finish()
{
    m_out.resize(m_end);
    return static_cast<std::int32_t>(m_end);
}

void GiWriter::PutRect(std::int32_t position, const GiRect &rect)
{
    PutLong(m_out, position, rect.Left);
    PutLong(m_out, position + 4, rect.Top);
    PutLong(m_out, position + 8, rect.Right);
    PutLong(m_out, position + 12, rect.Bottom);
}

// Codes the rectangle of a mask; put(target, x, y, count) writes the coded pixels of a run.
template <int PixelBytes, typename Put>
void CodeLayer(GiWriter &writer, const PixelMask &mask, const GiRect &part, ByteView palette, Put put)
{
    const std::size_t start = writer.End();
    const std::size_t rowsStart = start + rowrle::HeaderSize + palette.size();
    // Most of what the layer needs at once, for growing copies what there is.
    const auto pixels = static_cast<std::size_t>(mask.CountPixels());
    std::uint8_t *head = writer.Room(rowsStart - start + pixels * PixelBytes + pixels / 32 +
                                     MaxRowBytes(mask.Width()) + std::size_t(part.Height()) * 8);
    std::copy(palette.begin(), palette.end(), head + rowrle::HeaderSize);
    writer.Advance(rowsStart - start);

    for (std::int32_t y = part.Top; y < part.Bottom; y++) {
        std::uint8_t *const row = writer.Room(MaxRowBytes(mask.Width()));
        const std::uint8_t *const end = CodeRow<PixelBytes>(
            row, mask.Row(y), part.Left, part.Right,
            [&put, y](std::uint8_t *target, std::int32_t x, std::size_t count) { put(target, x, y, count); });
        writer.Advance(std::size_t(end - row));
    }
    rowrle::PutHeader(writer.At(start),
                      {static_cast<std::uint32_t>(writer.End() - rowsStart),
                       static_cast<std::uint32_t>(part.Width()), static_cast<std::uint32_t>(part.Height())});
}

// Type 0.
void WritePlane(GiWriter &writer, const FrameBuf &picture, bool is565, bool crop)
{
    const std::size_t start = writer.End();
    if (is565) {
        const std::size_t bytes = picture.Pixels.size() / 2;
        Graphics().VTGF_ConvertRGBAto565(writer.Room(bytes), picture.Pixels.data(), &picture.Width,
                                         &picture.Height);
        writer.Advance(bytes);
        writer.EnterLayer(0, start, OnCanvas(picture, WholeOf(picture.Width, picture.Height)));
        return;
    }
    const GiRect part = crop ? ContentOf(picture) : WholeOf(picture.Width, picture.Height);
    if (part.IsEmpty()) {
        writer.EnterLayer(0, start, {});
        return;
    }
    const std::size_t rowBytes = std::size_t(part.Width()) * 4;
    std::uint8_t *target = writer.Room(rowBytes * std::size_t(part.Height()));
    for (std::int32_t y = part.Top; y < part.Bottom; y++, target += rowBytes)
        std::memcpy(target, PixelsAt(picture, part.Left, y), rowBytes);
    writer.Advance(rowBytes * std::size_t(part.Height()));
    writer.EnterLayer(0, start, OnCanvas(picture, part));
}

// Types 1 and 2.
void WriteColourLayers(GiWriter &writer, const FrameBuf &picture, std::int32_t layers,
                       std::int32_t transClass, bool crop, const std::function<void()> &yield)
{
    PixelClasses classes = Classify(picture);
    if (transClass != 2)
        classes.Partly = PixelMask(picture.Width, picture.Height);

    const auto write = [&]<int PixelBytes>(std::int32_t layer, const PixelMask &mask, auto put) {
        const GiRect part = crop ? mask.Bounds() : WholeOf(picture.Width, picture.Height);
        if (!part.IsEmpty()) {
            const std::size_t start = writer.End();
            CodeLayer<PixelBytes>(writer, mask, part, {},
                                  [&](std::uint8_t *target, std::int32_t x, std::int32_t y,
                                      std::size_t count) { put(target, PixelsAt(picture, x, y), count); });
            writer.EnterLayer(layer, start, OnCanvas(picture, part));
        }
        yield();
    };
    // Premultiplying changes nothing where the alpha is 255.
    write.template operator()<2>(0, classes.Opaque, PackRun);
    if (layers == 1)
        return;
    write.template operator()<2>(1, classes.Partly, PackPremultipliedRun);
    write.template operator()<1>(2, classes.Partly, TransparencyRun);
}

struct Indexed {
    ByteArray indexes; // top row first
    std::array<std::uint8_t, GiPaletteSize> palette{};
};

Indexed Reduce(const FrameBuf &picture)
{
    Indexed indexed;
    indexed.indexes.resize(picture.Pixels.size() / 4);
    Graphics().VTGF_RGBAtoIndexed8(indexed.indexes.data(), indexed.palette.data(), picture.Pixels.data(),
                                   &picture.Width, &picture.Height);
    return indexed;
}

// The palette as layer 0 (5-6-5) or layer 1 (premultiplied 5-6-5, transparency, 0) of type 3 holds it.
ByteArray CodePalette(const Indexed &indexed, std::int32_t layer)
{
    const std::size_t entryBytes = layer == 0 ? 2 : 4;
    ByteArray coded;
    coded.assign(256 * entryBytes, 0);
    for (std::size_t i = 0; i < 256; i++) {
        const std::uint8_t *entry = indexed.palette.data() + i * 4;
        std::uint8_t *const target = coded.data() + i * entryBytes;
        if (layer == 0) {
            Store16(target, Pack565(entry[0], entry[1], entry[2]));
            continue;
        }
        Store16(target, PackPremultipliedPixel(PixelOf(entry[0], entry[1], entry[2], entry[3])));
        target[2] = InvAlpha6(entry[3]);
    }
    return coded;
}

// The picture's pixels of one layer of type 3, all others 0.
FrameBuf LayerOf(const FrameBuf &picture, std::int32_t layer, std::int32_t transClass)
{
    FrameBuf work;
    work.X = picture.X;
    work.Y = picture.Y;
    work.Width = picture.Width;
    work.Height = picture.Height;
    work.Pixels.resize(picture.Pixels.size());
    const auto bytes = static_cast<std::int32_t>(picture.Pixels.size());
    const GraphicsLibrary &graphics = Graphics();
    if (layer == 1 && transClass != 2)
        std::memset(work.Pixels.data(), 0, work.Pixels.size());
    else
        (layer == 0 ? graphics.VTGF_TransBuf_Copy_32 : graphics.VTGF_TransAlphaBuf_Copy_32)(
            work.Pixels.data(), &bytes, picture.Pixels.data(), &bytes);
    return work;
}

// Type 3.
void WriteIndexedLayers(GiWriter &writer, const FrameBuf &picture, std::int32_t transClass, bool crop,
                        const std::function<void()> &yield)
{
    for (std::int32_t layer = 0; layer < GiLayerCount(3); layer++) {
        FrameBuf work = LayerOf(picture, layer, transClass);
        if (crop)
            work = CropToContent(work);
        if (!work.Pixels.empty()) {
            const Indexed indexed = Reduce(work);
            const GiRect whole = WholeOf(work.Width, work.Height);
            const std::size_t start = writer.End();
            CodeLayer<1>(writer, MaskOfIndexes(indexed.indexes.data(), work.Width, work.Height), whole,
                         CodePalette(indexed, layer),
                         [&](std::uint8_t *target, std::int32_t x, std::int32_t y, std::size_t count) {
                             std::memcpy(target, indexed.indexes.data() + std::int64_t(y) * work.Width + x,
                                         count);
                         });
            writer.EnterLayer(layer, start, OnCanvas(work, whole));
        }
        yield();
    }
}

// Type 4.
void WriteIndexPlane(GiWriter &writer, const FrameBuf &picture)
{
    const Indexed indexed = Reduce(picture);
    const std::size_t plane = writer.End();
    std::memcpy(writer.Room(indexed.indexes.size()), indexed.indexes.data(), indexed.indexes.size());
    writer.Advance(indexed.indexes.size());
    writer.EnterLayer(0, plane, OnCanvas(picture, WholeOf(picture.Width, picture.Height)));

    const std::size_t palette = writer.End();
    std::memcpy(writer.Room(indexed.palette.size()), indexed.palette.data(), indexed.palette.size());
    writer.Advance(indexed.palette.size());
    writer.EnterLayer(1, palette, {});
}

} // namespace

std::int32_t EncodeGi(ByteArray &out, const FrameBuf &picture, std::int32_t type, std::int32_t transClass,
                      bool crop, const std::function<void()> &yield)
{
    if (!HoldsPicture(picture) || type < 0 || type > MaxCodedType || transClass < 0 || transClass > 2 ||
        (type != 0 && transClass == 0))
        return 0;

    const std::function<void()> pause = yield ? yield : [] {};
    const bool is565 = type != 0 || transClass == 0;
    GiWriter writer(out, picture, type, is565 ? Masks565 : Masks8888);
    if (type == 0) {
        WritePlane(writer, picture, is565, crop);
        pause();
    } else if (type == 3) {
        WriteIndexedLayers(writer, picture, transClass, crop, pause);
    } else if (type == 4) {
        WriteIndexPlane(writer, picture);
        pause();
    } else {
        WriteColourLayers(writer, picture, GiLayerCount(type), transClass, crop, pause);
    }
    return writer.Finish();
}

FrameBuf CropToContent(const FrameBuf &layer)
{
    FrameBuf cropped;
    if (!HoldsPicture(layer))
        return cropped;
    const GiRect content = ContentOf(layer);
    if (content.IsEmpty())
        return cropped;

    cropped.X = Plus(layer.X, content.Left);
    cropped.Y = Plus(layer.Y, content.Top);
    cropped.Width = static_cast<std::int32_t>(content.Width());
    cropped.Height = static_cast<std::int32_t>(content.Height());
    cropped.Pixels.resize(std::size_t(PictureBytes(cropped.Width, cropped.Height)));
    const std::int32_t start = 0;
    Graphics().VTGF_CopyClip_32(cropped.Pixels.data(), &start, &start, &cropped.Width, &cropped.Height,
                                layer.Pixels.data(), &content.Left, &content.Top, &layer.Width,
                                &layer.Height);
    return cropped;
}

} // namespace wb
