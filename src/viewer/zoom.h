// The zoom levels of a picture, in percent.
#pragma once

#include <cstdint>

namespace wb
{

inline constexpr std::int32_t MinZoom = 12;
inline constexpr std::int32_t MaxZoom = 1000;

constexpr std::int32_t Scaled(std::int32_t length, std::int32_t zoom)
{
    return static_cast<std::int32_t>(std::int64_t(length) * zoom / 100);
}

// The levels below 100 %; above it they lie 100 apart.
inline constexpr std::int32_t ZoomLevels[] = {12, 25, 50, 100};

constexpr std::int32_t ZoomedIn(std::int32_t zoom)
{
    for (const std::int32_t level : ZoomLevels)
        if (zoom < level)
            return level;
    return zoom + 100;
}

// The next smaller level, also from a fitted zoom between two levels; never below MinZoom.
constexpr std::int32_t ZoomedOut(std::int32_t zoom)
{
    if (zoom > 100)
        return zoom - 100;
    std::int32_t smaller = MinZoom;
    for (const std::int32_t level : ZoomLevels)
        if (level < zoom)
            smaller = level;
    return smaller;
}

// The largest whole percent up to 100 at which the picture fits; 100 for an empty picture.
std::int32_t FitZoom(std::int32_t width, std::int32_t height, std::int32_t innerWidth,
                     std::int32_t innerHeight);

} // namespace wb
