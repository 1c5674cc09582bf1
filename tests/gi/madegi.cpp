#include "madegi.h"

#include "common/bytes.h"
#include "gi/gidecoder.h"
#include "rastgl/rowrle.h"
#include "rastgl/rows565.h"

#include <gtest/gtest.h>

namespace wb::test
{

FrameBuf RandomPicture(std::mt19937 &random, std::int32_t width, std::int32_t height, std::int32_t transClass)
{
    const std::int32_t left = std::int32_t(random() % 200) - 100;
    const std::int32_t top = std::int32_t(random() % 200) - 100;
    FrameBuf picture = MakeCanvas({left, top, left + width, top + height});
    std::vector<std::uint32_t> colours(200);
    for (std::uint32_t &colour : colours)
        colour = (random() & 0xFFFFFF) | (transClass == 2 && random() % 3 != 0 ? 4 + random() % 248 : 255)
                                             << 24;
    const std::size_t pixels = picture.Pixels.size() / 4;
    const std::size_t longest = random() % 2 == 0 ? 5 : 300;
    for (std::size_t i = 0; i < pixels;) {
        const bool empty = transClass != 0 && random() % 2 == 0;
        for (std::size_t run = 1 + random() % longest; run > 0 && i < pixels; run--, i++)
            Store32(&picture.Pixels[i * 4], empty ? 0 : colours[random() % colours.size()]);
    }
    return picture;
}

ByteArray MakeGi(std::int32_t type, const PixelMasks &masks, const GiRect &bounds,
                 const std::vector<MadeLayer> &layers)
{
    ByteArray gi;
    std::int32_t end = 0;
    const auto append = [&](std::initializer_list<std::int32_t> values) {
        for (const std::int32_t value : values)
            AppendLong(gi, end, value);
    };
    append({GiMagic, 1, bounds.Left, bounds.Top, bounds.Right, bounds.Bottom});
    append({masks.Red, masks.Green, masks.Blue, masks.Alpha, type, std::int32_t(layers.size()), 0, 0, 0, 0});
    std::int32_t data = GiHeaderSize + std::int32_t(layers.size()) * GiLayerRecordSize;
    for (const MadeLayer &layer : layers) {
        const GiRect &b = layer.bounds;
        append({data, ByteCount(layer.data), b.Left, b.Top, b.Right, b.Bottom, 0, 0});
        data += ByteCount(layer.data);
    }
    for (const MadeLayer &layer : layers)
        gi.insert(gi.end(), layer.data.begin(), layer.data.end());
    return gi;
}

ByteArray MakeRunLayer(std::uint32_t width, std::uint32_t height, const ByteArray &rows)
{
    ByteArray layer(rowrle::HeaderSize);
    rowrle::PutHeader(layer.data(), {std::uint32_t(rows.size()), width, height});
    layer.insert(layer.end(), rows.begin(), rows.end());
    return layer;
}

FrameBuf Decode(ByteView gi)
{
    FrameBuf picture;
    std::int32_t offset = 0;
    DecodeGi(picture, gi, offset);
    EXPECT_EQ(offset, 0);
    return picture;
}

std::uint32_t PixelAt(const FrameBuf &picture, std::int32_t x, std::int32_t y)
{
    return Load32(&picture.Pixels[std::size_t((picture.Height - 1 - y) * picture.Width + x) * 4]);
}

void SetPixel(FrameBuf &picture, std::int32_t x, std::int32_t y, std::uint32_t pixel)
{
    Store32(&picture.Pixels[std::size_t((picture.Height - 1 - y) * picture.Width + x) * 4], pixel);
}

FrameBuf MakeCanvas(const GiRect &place)
{
    FrameBuf canvas;
    canvas.X = place.Left;
    canvas.Y = place.Top;
    canvas.Width = std::int32_t(place.Width());
    canvas.Height = std::int32_t(place.Height());
    canvas.Pixels.assign(std::size_t(canvas.Width * canvas.Height * 4), 0);
    return canvas;
}

} // namespace wb::test
