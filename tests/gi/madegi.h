// Made pictures and GI files for the tests.
#pragma once

#include "common/bytes.h"
#include "gfx/pixels.h"
#include "gi/gidecoder.h"
#include "gi/giencoder.h"
#include "gi/giformat.h"
#include "rastgl/rowrle.h"
#include "rastgl/rows565.h"
#include "support/samplefolder.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace wb::test
{

// A picture of that transparency class at a random place: runs of pixels of at most 200 colours, and gaps.
// Partly transparent pixels have the alphas 4 to 251, which come back as such.
inline FrameBuf RandomPicture(std::mt19937 &random, std::int32_t width, std::int32_t height,
                              std::int32_t transClass)
{
    std::vector<std::uint32_t> colours(200);
    for (std::uint32_t &colour : colours) {
        const std::uint32_t alpha = transClass == 2 && random() % 3 != 0 ? 4 + random() % 248 : 255;
        colour = (random() & 0xFFFFFF) | alpha << 24;
    }
    const std::size_t longest = random() % 2 == 0 ? 5 : 300;
    std::size_t run = 0;
    bool empty = false;
    FrameBuf picture = MakePicture(width, height, [&](int, int) {
        if (run-- == 0) {
            run = random() % longest;
            empty = transClass != 0 && random() % 2 == 0;
        }
        return empty ? 0 : colours[random() % colours.size()];
    });
    picture.X = std::int32_t(random() % 200) - 100;
    picture.Y = std::int32_t(random() % 200) - 100;
    return picture;
}

struct MadeLayer {
    GiRect bounds;
    ByteArray data;
};

// A file of these parts; layers without data are absent.
inline ByteArray MakeGi(std::int32_t type, const PixelMasks &masks, const GiRect &bounds,
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
    for (const auto &[b, bytes] : layers) {
        append({bytes.empty() ? 0 : data, ByteCount(bytes), b.Left, b.Top, b.Right, b.Bottom, 0, 0});
        data += ByteCount(bytes);
    }
    for (const MadeLayer &layer : layers)
        gi.insert(gi.end(), layer.data.begin(), layer.data.end());
    return gi;
}

// A run-coded layer: the palette of an indexed one, then one row's bytes after another.
inline ByteArray MakeRunLayer(std::int64_t width, std::int64_t height, const ByteArray &rows,
                              const ByteArray &palette = {})
{
    ByteArray layer(rowrle::HeaderSize);
    rowrle::PutHeader(layer.data(),
                      {std::uint32_t(rows.size()), std::uint32_t(width), std::uint32_t(height)});
    layer.insert(layer.end(), palette.begin(), palette.end());
    layer.insert(layer.end(), rows.begin(), rows.end());
    return layer;
}

inline ByteArray Encode(const FrameBuf &picture, std::int32_t type, std::int32_t transClass, bool crop)
{
    ByteArray gi = {1, 2, 3}; // must not matter
    const std::int32_t length = EncodeGi(gi, picture, type, transClass, crop);
    EXPECT_EQ(length, ByteCount(gi));
    return gi;
}

// Onto that picture, or a fresh one.
inline FrameBuf Decode(ByteView gi, FrameBuf picture = {})
{
    std::int32_t offset = 0;
    DecodeGi(picture, gi, offset);
    EXPECT_EQ(offset, 0);
    return picture;
}

inline std::uint32_t PixelAt(const FrameBuf &picture, std::int32_t x, std::int32_t y)
{
    return Load32(&picture.Pixels[std::size_t((picture.Height - 1 - y) * picture.Width + x) * 4]);
}

inline void SetPixel(FrameBuf &picture, std::int32_t x, std::int32_t y, std::uint32_t pixel)
{
    Store32(&picture.Pixels[std::size_t((picture.Height - 1 - y) * picture.Width + x) * 4], pixel);
}

// A picture of that size and place.
inline FrameBuf MakeCanvas(const GiRect &place, std::uint32_t colour = 0)
{
    FrameBuf canvas = MakePicture(int(place.Width()), int(place.Height()), colour);
    canvas.X = place.Left;
    canvas.Y = place.Top;
    return canvas;
}

inline GiRect PlaceOf(const FrameBuf &picture)
{
    return {picture.X, picture.Y, picture.X + picture.Width, picture.Y + picture.Height};
}

} // namespace wb::test
