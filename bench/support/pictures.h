// The made pictures that the benchmarks measure with: the same bytes on every run and machine.
#pragma once

#include <cstdint>
#include <vector>

namespace wb::bench
{

// 32-bit pixels: B, G, R, A, alpha not premultiplied, bottom row first, no padding.
struct MadePicture {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> pixels;
};

// Shaded, textured bodies on a fully transparent ground: alpha is 0 or 255, as in the game's figures.
MadePicture MakeSprite(int width = 1024, int height = 768);

// Glows and smoke over a transparent ground: every alpha from 0 to 255 occurs.
MadePicture MakeGraded(int width = 1024, int height = 768);

// An opaque landscape with cloudy detail of every size and a little grain, like a scanned or rendered photo.
MadePicture MakePhoto(int width = 1024, int height = 768);

} // namespace wb::bench
