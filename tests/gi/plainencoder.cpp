#include "plainencoder.h"

#include "gfx/graphicslibrary.h"
#include "gfx/pixels.h"
#include "madegi.h"

namespace wb::test
{

namespace
{

void Append16(ByteArray &bytes, std::uint16_t value)
{
    bytes.push_back(value & 255);
    bytes.push_back(value >> 8);
}

std::uint16_t Premultiplied(std::uint32_t pixel)
{
    const std::uint8_t a = pixel >> 24;
    return Pack565(BlendOver(0, pixel >> 16 & 255, a), BlendOver(0, pixel >> 8 & 255, a),
                   BlendOver(0, pixel & 255, a));
}

enum class Coding { Colour, Transparency, Raw };

void AppendRow(ByteArray &out, const FrameBuf &picture, std::int32_t y, Coding coding)
{
    bool visible = false;
    for (std::int32_t x = 0; x < picture.Width; x++)
        visible = visible || PixelAt(picture, x, y) >> 24 != 0;
    if (!visible) {
        out.push_back(0x80);
        return;
    }
    std::uint8_t skip = 0;
    std::int64_t run = -1; // where the open run's byte stands
    for (std::int32_t x = 0; x < picture.Width; x++) {
        const std::uint32_t pixel = PixelAt(picture, x, y);
        if (pixel == 0) {
            run = -1;
            if (++skip == 127) {
                out.push_back(skip);
                skip = 0;
            }
            continue;
        }
        if (skip != 0)
            out.push_back(skip);
        skip = 0;
        if (run < 0) {
            run = std::int64_t(out.size());
            out.push_back(0x80);
        }
        out[std::size_t(run)]++;
        if (coding == Coding::Colour)
            Append16(out, Premultiplied(pixel));
        else
            out.push_back(coding == Coding::Raw ? pixel >> 24 : InvAlpha6(pixel >> 24));
        if (out[std::size_t(run)] == 0xFF)
            run = -1;
    }
    if (skip != 0)
        out.push_back(skip);
    out.push_back(0);
}

ByteArray RowsOf(const FrameBuf &picture, Coding coding)
{
    ByteArray rows;
    for (std::int32_t y = 0; y < picture.Height; y++)
        AppendRow(rows, picture, y, coding);
    return rows;
}

FrameBuf WorkLayer(const FrameBuf &picture, std::int32_t layer, std::int32_t transClass)
{
    FrameBuf work = MakeCanvas({picture.X, picture.Y, picture.X + picture.Width, picture.Y + picture.Height});
    for (std::int32_t y = 0; y < picture.Height; y++)
        for (std::int32_t x = 0; x < picture.Width; x++) {
            const std::uint32_t alpha = PixelAt(picture, x, y) >> 24;
            if (layer == 0 ? alpha == 255 : transClass == 2 && alpha != 0 && alpha != 255)
                SetPixel(work, x, y, PixelAt(picture, x, y));
        }
    return work;
}

FrameBuf Crop(const FrameBuf &picture)
{
    GiRect box = {picture.Width, picture.Height, 0, 0};
    for (std::int32_t y = 0; y < picture.Height; y++)
        for (std::int32_t x = 0; x < picture.Width; x++)
            if (PixelAt(picture, x, y) >> 24 != 0)
                box = {std::min(box.Left, x), std::min(box.Top, y), std::max(box.Right, x + 1),
                       std::max(box.Bottom, y + 1)};
    if (box.IsEmpty())
        return {};
    FrameBuf cropped = MakeCanvas(
        {picture.X + box.Left, picture.Y + box.Top, picture.X + box.Right, picture.Y + box.Bottom});
    for (std::int32_t y = 0; y < cropped.Height; y++)
        for (std::int32_t x = 0; x < cropped.Width; x++)
            SetPixel(cropped, x, y, PixelAt(picture, x + box.Left, y + box.Top));
    return cropped;
}

GiRect PlaceOf(const FrameBuf &picture)
{
    return {picture.X, picture.Y, picture.X + picture.Width, picture.Y + picture.Height};
}

ByteArray PlaneOf(const FrameBuf &picture, bool is565)
{
    ByteArray plane;
    for (std::int32_t y = 0; y < picture.Height; y++)
        for (std::int32_t x = 0; x < picture.Width; x++) {
            const std::uint32_t pixel = PixelAt(picture, x, y);
            if (is565) {
                Append16(plane, Pack565(pixel >> 16 & 255, pixel >> 8 & 255, pixel & 255));
                continue;
            }
            Append16(plane, pixel & 0xFFFF);
            Append16(plane, pixel >> 16);
        }
    return plane;
}

struct Reduced {
    ByteArray indexes, palette;
};

Reduced Reduce(const FrameBuf &picture)
{
    Reduced reduced = {ByteArray(picture.Pixels.size() / 4, 0), ByteArray(1024, 0)};
    Graphics().VTGF_RGBAtoIndexed8(reduced.indexes.data(), reduced.palette.data(), picture.Pixels.data(),
                                   &picture.Width, &picture.Height);
    return reduced;
}

ByteArray IndexedLayer(const FrameBuf &picture, std::int32_t layer)
{
    const Reduced reduced = Reduce(picture);
    FrameBuf carrier = MakeCanvas(PlaceOf(picture));
    for (std::int32_t i = 0; i < picture.Width * picture.Height; i++)
        SetPixel(carrier, i % picture.Width, i / picture.Width,
                 std::uint32_t(reduced.indexes[std::size_t(i)]) << 24);
    ByteArray data = MakeRunLayer(std::uint32_t(picture.Width), std::uint32_t(picture.Height),
                                  RowsOf(carrier, Coding::Raw));
    ByteArray palette;
    for (std::size_t i = 0; i < 1024; i += 4) {
        const std::uint8_t *entry = &reduced.palette[i];
        if (layer == 0) {
            Append16(palette, Pack565(entry[0], entry[1], entry[2]));
            continue;
        }
        Append16(palette, Premultiplied(PixelOf(entry[0], entry[1], entry[2], entry[3])));
        Append16(palette, InvAlpha6(entry[3]));
    }
    data.insert(data.begin() + 16, palette.begin(), palette.end());
    return data;
}

} // namespace

ByteArray EncodePlainly(const FrameBuf &picture, std::int32_t type, std::int32_t transClass, bool crop)
{
    const GiRect place = PlaceOf(picture);
    if (type == 4) {
        const Reduced reduced = Reduce(picture);
        return MakeGi(4, Masks565, place, {{place, reduced.indexes}, {{}, reduced.palette}});
    }
    if (type == 0) {
        const bool is565 = transClass == 0;
        const FrameBuf work = crop && !is565 ? Crop(picture) : picture;
        return MakeGi(0, is565 ? Masks565 : Masks8888, place, {{PlaceOf(work), PlaneOf(work, is565)}});
    }
    std::vector<MadeLayer> layers(std::size_t(GiLayerCount(type)));
    for (std::int32_t i = 0; i < GiLayerCount(type); i++) {
        FrameBuf work = WorkLayer(picture, i, transClass);
        if (crop)
            work = Crop(work);
        if (work.Width == 0)
            continue;
        const ByteArray rows = RowsOf(work, i == 2 ? Coding::Transparency : Coding::Colour);
        layers[std::size_t(i)] = {PlaceOf(work), type == 3 ? IndexedLayer(work, i)
                                                           : MakeRunLayer(std::uint32_t(work.Width),
                                                                          std::uint32_t(work.Height), rows)};
    }
    ByteArray gi = MakeGi(type, Masks565, place, layers);
    for (std::size_t i = 0; i < layers.size(); i++) // the record of an empty layer stays zero
        if (layers[i].data.empty())
            std::fill_n(gi.begin() + std::ptrdiff_t(64 + 32 * i), 4, 0);
    return gi;
}

} // namespace wb::test
