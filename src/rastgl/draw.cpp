// Drawing of pictures and buffers onto a surface.
#include "rastgl/picture.h"
#include "rastgl/rastgl.h"

#include <algorithm>
#include <array>

namespace
{

std::uint8_t Blend(std::uint8_t colour, std::uint8_t alpha, std::uint8_t below)
{
    return std::uint8_t((colour * alpha + below * (255 - alpha) + 127) / 255);
}

// Draws the part of a bottom-up buffer that falls on the surface. `below` gives the three bytes that show
// through at a pixel of the surface.
template <typename Below>
void Draw(const RastGlSurface *surface, std::int64_t x, std::int64_t y, const std::uint8_t *pixels,
          int32_t width, int32_t height, Below &&below)
{
    if (surface == nullptr || surface->pixels == nullptr || pixels == nullptr || width <= 0 || height <= 0)
        return;
    const std::int64_t left = std::max<std::int64_t>(x, 0);
    const std::int64_t right = std::min<std::int64_t>(x + width, surface->width);
    const std::int64_t top = std::max<std::int64_t>(y, 0);
    const std::int64_t bottom = std::min<std::int64_t>(y + height, surface->height);
    for (std::int64_t row = top; row < bottom && left < right; ++row) {
        const std::uint8_t *source = pixels + ((height - 1 - (row - y)) * width + left - x) * 4;
        std::uint8_t *target = surface->pixels + row * surface->pitch + left * 4;
        for (std::int64_t column = left; column < right; ++column, source += 4, target += 4) {
            const std::uint8_t *under = below(target);
            for (int channel = 0; channel < 3; ++channel)
                target[channel] = Blend(source[channel], source[3], under[channel]);
            target[3] = 255;
        }
    }
}

// Draws over one colour, red in its low byte.
void DrawOver(const RastGlSurface *surface, int32_t x, int32_t y, const std::uint8_t *pixels, int32_t width,
              int32_t height, int32_t backColor)
{
    const std::array<std::uint8_t, 3> back = {std::uint8_t(backColor >> 16), std::uint8_t(backColor >> 8),
                                              std::uint8_t(backColor)};
    Draw(surface, x, y, pixels, width, height, [&back](const std::uint8_t *) { return back.data(); });
}

} // namespace

void VTGF_DIB_DrawFast(const RastGlSurface *surface, int32_t x, int32_t y, int32_t handle, int32_t backColor)
{
    if (const rastgl::Picture *picture = rastgl::FindPicture(handle))
        DrawOver(surface, x, y, picture->pixels.get(), picture->width, picture->height, backColor);
}

void VTGF_DrawBuf_Fast_32(const RastGlSurface *surface, int32_t x, int32_t y, const uint8_t *pixels,
                          const int32_t *width, const int32_t *height, int32_t backColor)
{
    DrawOver(surface, x, y, pixels, *width, *height, backColor);
}

void VTGF_DrawBufGDI_32(const RastGlSurface *surface, int32_t x, int32_t y, const uint8_t *pixels,
                        const int32_t *width, const int32_t *height)
{
    Draw(surface, x, y, pixels, *width, *height, [](const std::uint8_t *target) { return target; });
}
