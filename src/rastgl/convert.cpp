// Whole planes between 32-bit pixels and 5-6-5 or palette indexes. Planes lie top row first, pixels bottom
// row first.
#include "rastgl/rastgl.h"

#include "rastgl/colourtable.h"
#include "rastgl/rows565.h"

#include <algorithm>
#include <array>

namespace
{

// Calls work(pixels, plane, width) for each row; the planes have `planeBytes` a pixel.
template <typename Pixels, typename Plane, typename Work>
void ForEachRow(Pixels *pixels, Plane *plane, int planeBytes, const std::int32_t *width,
                const std::int32_t *height, Work work)
{
    if (*width <= 0)
        return;
    const std::size_t count = std::size_t(*width);
    for (std::int64_t y = 0; y < *height; y++)
        work(pixels + (*height - 1 - y) * *width * 4, plane + y * *width * planeBytes, count);
}

} // namespace

void VTGF_Convert565toRGBA(uint8_t *pixels, const uint8_t *plane, const int32_t *width, const int32_t *height)
{
    ForEachRow(pixels, plane, 2, width, height, wb::WidenRun);
}

void VTGF_ConvertRGBAto565(uint8_t *plane, const uint8_t *pixels, const int32_t *width, const int32_t *height)
{
    ForEachRow(
        pixels, plane, 2, width, height,
        [](const std::uint8_t *from, std::uint8_t *to, std::size_t count) { wb::PackRun(to, from, count); });
}

void VTGF_AlphaSimpleBufPalAlpha_Copy_32(uint8_t *pixels, const uint8_t *indexes, const uint8_t *palette,
                                         const int32_t *width, const int32_t *height)
{
    std::array<std::uint32_t, 256> colours;
    for (std::size_t i = 0; i < colours.size(); i++) {
        const std::uint8_t *entry = palette + i * 4;
        colours[i] = wb::PixelOf(entry[0], entry[1], entry[2], entry[3]);
    }
    const rastgl::ColourTable table(colours);
    ForEachRow(pixels, indexes, 1, width, height,
               [&table](std::uint8_t *to, const std::uint8_t *from, std::size_t count) {
                   table.Expand(to, from, count);
               });
}
