// Made pictures and GI files for the tests.
#pragma once

#include "gfx/framebuf.h"
#include "gi/giformat.h"

#include <random>
#include <vector>

namespace wb::test
{

// A picture of that transparency class at a random place: runs of pixels of at most 200 colours, and gaps.
// Partly transparent pixels have the alphas 4 to 251, which come back as such.
FrameBuf RandomPicture(std::mt19937 &random, std::int32_t width, std::int32_t height,
                       std::int32_t transClass);

struct MadeLayer {
    GiRect bounds;
    ByteArray data;
};

// A file of these parts; layers without data are absent.
ByteArray MakeGi(std::int32_t type, const PixelMasks &masks, const GiRect &bounds,
                 const std::vector<MadeLayer> &layers);

// A run-coded layer of one row's bytes after another.
ByteArray MakeRunLayer(std::uint32_t width, std::uint32_t height, const ByteArray &rows);

FrameBuf Decode(ByteView gi);

std::uint32_t PixelAt(const FrameBuf &picture, std::int32_t x, std::int32_t y);
void SetPixel(FrameBuf &picture, std::int32_t x, std::int32_t y, std::uint32_t pixel);

// An empty picture of that size and place.
FrameBuf MakeCanvas(const GiRect &place);

} // namespace wb::test
