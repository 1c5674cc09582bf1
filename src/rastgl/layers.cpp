// Drawing of run-coded GI layers.
#include "rastgl/rastgl.h"

#include "rastgl/colourtable.h"
#include "rastgl/compose.h"
#include "rastgl/rowrle.h"
#include "rastgl/rows565.h"

#include <array>

namespace
{

using namespace wb;

// Draws the coded rows, which begin after a palette of that many bytes, through draw(target, coded pixels,
// count).
template <int PixelBytes, typename Draw>
void DrawRows(std::uint8_t *destination, std::int32_t pitch, const std::uint8_t *layer, int paletteBytes,
              Draw draw)
{
    const rowrle::LayerHeader header = rowrle::GetHeader(layer);
    const std::uint8_t *at = layer + rowrle::HeaderSize + paletteBytes;
    const std::uint8_t *const end = at + header.rowBytes;
    for (std::int64_t y = 0; y < header.height && at != end; y++) {
        std::uint8_t *const row = destination + y * pitch;
        at = rowrle::ReadRow<PixelBytes>(at, end, header.width,
                                         [=](std::size_t x, std::size_t count, const std::uint8_t *coded) {
                                             draw(row + x * 4, coded, count);
                                         });
    }
}

// Draws indexes whose colours replace what is there.
void DrawIndexes(std::uint8_t *destination, std::int32_t pitch, const std::uint8_t *layer, int paletteBytes,
                 const rastgl::ColourTable &table)
{
    DrawRows<1>(destination, pitch, layer, paletteBytes,
                [&table](std::uint8_t *target, const std::uint8_t *coded, std::size_t count) {
                    table.Expand(target, coded, count);
                });
}

// 256 entries of 5-6-5, transparency, 0.
class AlphaPalette
{
public:
    explicit AlphaPalette(const std::uint8_t *entries) : m_entries(entries) {}

    std::uint32_t Lay(std::uint32_t pixel, std::size_t index) const
    {
        const std::uint8_t *const entry = m_entries + index * 4;
        return rastgl::AddColour(rastgl::LayAlpha(pixel, AlphaOfTransparency(entry[2])), Load16(entry));
    }

    // What each entry makes of a pixel that is zero.
    std::array<std::uint32_t, 256> OnEmpty() const
    {
        std::array<std::uint32_t, 256> colours;
        for (std::size_t i = 0; i < colours.size(); i++)
            colours[i] = Lay(0, i);
        return colours;
    }

private:
    const std::uint8_t *m_entries;
};

} // namespace

void VTGR_TransBuf_DrawRGBA_16(uint8_t *destination, int32_t pitch, const uint8_t *layer)
{
    DrawRows<2>(destination, pitch, layer, 0, WidenRun);
}

void VTGR_AlphaBuf_Draw_RGBA(uint8_t *destination, int32_t pitch, const uint8_t *layer)
{
    DrawRows<1>(destination, pitch, layer, 0, rastgl::LayAlphas);
}

void VTGR_TransAlphaBuf_DrawRGBA_16(uint8_t *destination, int32_t pitch, const uint8_t *layer)
{
    DrawRows<2>(destination, pitch, layer, 0, rastgl::AddColours);
}

void VTGR_AlphaIndexed_DrawRGBA_16(uint8_t *destination, int32_t pitch, const uint8_t *layer)
{
    std::array<std::uint32_t, 256> colours;
    const std::uint8_t *const palette = layer + rowrle::HeaderSize;
    for (std::size_t i = 0; i < colours.size(); i++)
        colours[i] = Widen565(Load16(palette + i * 2));

    DrawIndexes(destination, pitch, layer, rowrle::OpaquePaletteSize, rastgl::ColourTable(colours));
}

void VTGR_AlphaIndexed_AlphaDrawRGBA_16(uint8_t *destination, int32_t pitch, const uint8_t *layer)
{
    const AlphaPalette palette(layer + rowrle::HeaderSize);
    const rastgl::ColourTable onEmpty(palette.OnEmpty());
    DrawRows<1>(destination, pitch, layer, rowrle::AlphaPaletteSize,
                [&](std::uint8_t *target, const std::uint8_t *coded, std::size_t count) {
                    if (rastgl::IsEmptyRun(target, count)) {
                        onEmpty.Expand(target, coded, count);
                        return;
                    }
                    for (std::size_t i = 0; i < count; i++)
                        Store32(target + i * 4, palette.Lay(Load32(target + i * 4), coded[i]));
                });
}

void VTGR_AlphaIndexed_AlphaCopyRGBA_16(uint8_t *destination, int32_t pitch, const uint8_t *layer)
{
    const rastgl::ColourTable onEmpty(AlphaPalette(layer + rowrle::HeaderSize).OnEmpty());
    DrawIndexes(destination, pitch, layer, rowrle::AlphaPaletteSize, onEmpty);
}

void VTGR_F5_DrawRGBA(uint8_t *, int32_t, const uint8_t *) {}

void VTGR_F6_DrawRGBA(uint8_t *, int32_t, const uint8_t *) {}
