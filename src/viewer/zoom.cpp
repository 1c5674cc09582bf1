#include "viewer/zoom.h"

namespace wb
{

std::int32_t FitZoom(std::int32_t width, std::int32_t height, std::int32_t innerWidth,
                     std::int32_t innerHeight)
{
    if (std::int64_t(width) * height <= 0)
        return 100;
    std::int32_t zoom = 100;
    while (zoom > 0 && (Scaled(width, zoom) > innerWidth || Scaled(height, zoom) > innerHeight))
        --zoom;
    return zoom;
}

} // namespace wb
