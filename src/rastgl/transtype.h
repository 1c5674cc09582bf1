// The transparency class of a picture, which the library and the formats tell alike.
#pragma once

#include <cstdint>
#include <span>

namespace wb
{

// Of 32-bit pixels: 0 every one opaque (also when there is none), 1 opaque or fully transparent, 2 some
// partly transparent.
inline std::int32_t TransTypeOf(std::span<const std::uint8_t> pixels)
{
    std::int32_t transType = 0;
    for (std::size_t alpha = 3; alpha < pixels.size(); alpha += 4) {
        if (pixels[alpha] == 255)
            continue;
        if (pixels[alpha] != 0)
            return 2;
        transType = 1;
    }
    return transType;
}

} // namespace wb
