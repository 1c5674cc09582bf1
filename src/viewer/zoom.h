// The zoom levels of a picture, in percent.
#pragma once

#include <cstdint>
#include <initializer_list>

namespace wb
{

inline constexpr std::int32_t MinZoom = 12;
inline constexpr std::int32_t MaxZoom = 1000;

constexpr std::int32_t Scaled(std::int32_t length, std::int32_t zoom)
{
    return static_cast<std::int32_t>(std::int64_t(length) * zoom / 100);
}

// The next larger level: 12, 25, 50, 100, then in steps of 100.
constexpr std::int32_t ZoomedIn(std::int32_t zoom)
{
    for (const std::int32_t level : {12, 25, 50, 100})
        if (zoom < level)
            return level;
    return zoom + 100;
}

// 100, 50, 25 and 12 in turn; from any other zoom 100 less, but never below MinZoom.
constexpr std::int32_t ZoomedOut(std::int32_t zoom)
{
    switch (zoom) {
    case 100:
        return 50;
    case 50:
        return 25;
    case 25:
        return 12;
    default:
        return zoom - 100 < MinZoom ? MinZoom : zoom - 100;
    }
}

// The largest whole percent up to 100 at which the picture fits; 100 for an empty picture.
std::int32_t FitZoom(std::int32_t width, std::int32_t height, std::int32_t innerWidth,
                     std::int32_t innerHeight);

} // namespace wb
