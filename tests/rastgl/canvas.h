// Made pictures as the functions on buffers take them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <random>
#include <vector>

struct Canvas {
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::vector<std::uint32_t> colours; // 0xAARRGGBB, bottom row first

    bool operator==(const Canvas &) const = default;

    // Counted from the top-left.
    std::uint32_t &At(int x, int y) { return colours.end()[x - std::ptrdiff_t(y + 1) * width]; }
    std::uint32_t At(int x, int y) const { return colours.end()[x - std::ptrdiff_t(y + 1) * width]; }

    std::uint8_t *Bytes() { return reinterpret_cast<std::uint8_t *>(colours.data()); }
    const std::uint8_t *Bytes() const { return reinterpret_cast<const std::uint8_t *>(colours.data()); }
};

inline Canvas Flat(int width, int height, std::uint32_t colour = 0)
{
    return {width, height, std::vector(std::size_t(width * height), colour)};
}

inline Canvas Paint(int width, int height, const std::function<std::uint32_t(int, int)> &colour)
{
    Canvas made = Flat(width, height);
    for (int at = 0; at < width * height; ++at)
        made.colours[std::size_t(at)] = colour(at % width, at / width);
    return made;
}

inline Canvas Noise(int width, int height, unsigned seed, std::uint32_t fixedBits = 0)
{
    std::mt19937 random(seed);
    return Paint(width, height, [&](int, int) { return std::uint32_t(random()) | fixedBits; });
}
