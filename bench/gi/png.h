// libpng in memory, the yardstick of the GI benchmarks.
#pragma once

#include <cstdint>
#include <vector>

namespace wb::bench
{

enum class PngSetting {
    Default,
    Fastest, // level 1, every row by the Sub filter
};

// 32-bit pixels B, G, R, A, bottom row first, into `file`, whose capacity is kept.
void EncodePng(std::vector<std::uint8_t> &file, const std::uint8_t *pixels, int width, int height,
               PngSetting setting);

// And back into `pixels`, which hold width * height * 4 bytes.
void DecodePng(std::uint8_t *pixels, const std::vector<std::uint8_t> &file);

} // namespace wb::bench
