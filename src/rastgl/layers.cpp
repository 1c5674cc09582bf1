// Drawing of run-coded GI layers.
#include "rastgl/rastgl.h"

#include "rastgl/rowrle.h"
#include "rastgl/rows565.h"

#include <array>

namespace
{

using namespace wb;

// The 8-bit colours whose premultiplied form is a 5- or 6-bit value, for one alpha.
struct Unpremultiplied {
    std::array<std::uint8_t, 32> five;
    std::array<std::uint8_t, 64> six;
};

// 255 / alpha times the widened value, to the nearest and at most 255. Premultiplying and packing the result
// gives the value again wherever some colour with that alpha has it.
constexpr std::uint8_t Unpremultiply(int value, int alpha)
{
    return static_cast<std::uint8_t>(alpha == 0 ? 0 : std::min(255, (value * 255 + alpha / 2) / alpha));
}

constexpr std::array<Unpremultiplied, 256> MakeUnpremultiplied()
{
    std::array<Unpremultiplied, 256> table{};
    for (int alpha = 0; alpha < 256; alpha++) {
        for (unsigned value = 0; value < 32; value++)
            table[alpha].five[value] = Unpremultiply(Widen5(value), alpha);
        for (unsigned value = 0; value < 64; value++)
            table[alpha].six[value] = Unpremultiply(Widen6(value), alpha);
    }
    return table;
}

constexpr std::array<Unpremultiplied, 256> UnpremultipliedBy = MakeUnpremultiplied();

constexpr std::array<std::uint8_t, 256> MakeAlphas()
{
    std::array<std::uint8_t, 256> table{};
    for (int t = 0; t < 256; t++)
        table[t] = AlphaOfTransparency(static_cast<std::uint8_t>(t));
    return table;
}

constexpr std::array<std::uint8_t, 256> AlphaOf = MakeAlphas();

// Lays black with this alpha over the pixel: what it held keeps only the weight that shows through.
std::uint32_t LayAlpha(std::uint32_t pixel, std::uint32_t alpha)
{
    const std::uint32_t below = pixel >> 24;
    if (below == 0)
        return alpha << 24;

    const std::uint32_t through = below * (255 - alpha); // of 255 * 255
    const std::uint32_t sum = alpha * 255 + through;
    const std::uint32_t result = (sum + 127) / 255;
    const auto weigh = [=](std::uint32_t c) { return (2 * c * through + 255 * result) / (510 * result); };
    return result << 24 | weigh(pixel >> 16 & 255) << 16 | weigh(pixel >> 8 & 255) << 8 | weigh(pixel & 255);
}

// Each channel's sum, at most 255.
std::uint32_t AddSaturated(std::uint32_t one, std::uint32_t other)
{
#if defined(__SSE2__)
    const __m128i sum =
        _mm_adds_epu8(_mm_cvtsi32_si128(static_cast<int>(one)), _mm_cvtsi32_si128(static_cast<int>(other)));
    return static_cast<std::uint32_t>(_mm_cvtsi128_si32(sum));
#else
    std::uint32_t sum = 0;
    for (int shift = 0; shift < 32; shift += 8)
        sum |= std::min((one >> shift & 255) + (other >> shift & 255), 255u) << shift;
    return sum;
#endif
}

// Adds a premultiplied colour to a pixel whose alpha has been laid.
std::uint32_t AddColour(std::uint32_t pixel, std::uint16_t colour)
{
    const Unpremultiplied &by = UnpremultipliedBy[pixel >> 24];
    return AddSaturated(pixel,
                        PixelOf(by.five[colour >> 11], by.six[colour >> 5 & 63], by.five[colour & 31], 0));
}

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

} // namespace

void VTGR_TransBuf_DrawRGBA_16(uint8_t *destination, int32_t pitch, const uint8_t *layer)
{
    DrawRows<2>(destination, pitch, layer, 0, WidenRun);
}

void VTGR_AlphaBuf_Draw_RGBA(uint8_t *destination, int32_t pitch, const uint8_t *layer)
{
    DrawRows<1>(destination, pitch, layer, 0,
                [](std::uint8_t *target, const std::uint8_t *coded, std::size_t count) {
                    for (std::size_t i = 0; i < count; i++)
                        Store32(target + i * 4, LayAlpha(Load32(target + i * 4), AlphaOf[coded[i]]));
                });
}

void VTGR_TransAlphaBuf_DrawRGBA_16(uint8_t *destination, int32_t pitch, const uint8_t *layer)
{
    DrawRows<2>(destination, pitch, layer, 0,
                [](std::uint8_t *target, const std::uint8_t *coded, std::size_t count) {
                    for (std::size_t i = 0; i < count; i++)
                        Store32(target + i * 4, AddColour(Load32(target + i * 4), Load16(coded + i * 2)));
                });
}

void VTGR_AlphaIndexed_DrawRGBA_16(uint8_t *destination, int32_t pitch, const uint8_t *layer)
{
    std::array<std::uint32_t, 256> colours;
    const std::uint8_t *const palette = layer + rowrle::HeaderSize;
    for (std::size_t i = 0; i < colours.size(); i++)
        colours[i] = Widen565(Load16(palette + i * 2));

    DrawRows<1>(destination, pitch, layer, rowrle::OpaquePaletteSize,
                [&colours](std::uint8_t *target, const std::uint8_t *coded, std::size_t count) {
                    for (std::size_t i = 0; i < count; i++)
                        Store32(target + i * 4, colours[coded[i]]);
                });
}

void VTGR_AlphaIndexed_AlphaDrawRGBA_16(uint8_t *destination, int32_t pitch, const uint8_t *layer)
{
    // What each entry gives on an empty pixel is worked out once.
    struct Entry {
        std::uint32_t onEmpty;
        std::uint16_t colour;
        std::uint8_t alpha;
    };
    std::array<Entry, 256> entries;
    const std::uint8_t *const palette = layer + rowrle::HeaderSize;
    for (std::size_t i = 0; i < entries.size(); i++) {
        const std::uint16_t colour = Load16(palette + i * 4);
        const std::uint8_t alpha = AlphaOf[palette[i * 4 + 2]];
        entries[i] = {AddColour(LayAlpha(0, alpha), colour), colour, alpha};
    }

    DrawRows<1>(destination, pitch, layer, rowrle::AlphaPaletteSize,
                [&entries](std::uint8_t *target, const std::uint8_t *coded, std::size_t count) {
                    for (std::size_t i = 0; i < count; i++) {
                        const Entry &entry = entries[coded[i]];
                        const std::uint32_t below = Load32(target + i * 4);
                        Store32(target + i * 4, below >> 24 == 0
                                                    ? entry.onEmpty
                                                    : AddColour(LayAlpha(below, entry.alpha), entry.colour));
                    }
                });
}

void VTGR_F5_DrawRGBA(uint8_t *, int32_t, const uint8_t *) {}

void VTGR_F6_DrawRGBA(uint8_t *, int32_t, const uint8_t *) {}
