// Pixels whose channels a file places by bit masks, as BMP and DDS do.
#pragma once

#include "rastgl/picture.h"

#include <array>

namespace rastgl
{

struct ChannelMasks {
    std::uint32_t red = 0;
    std::uint32_t green = 0;
    std::uint32_t blue = 0;
    std::uint32_t alpha = 0; // 0: the pixels are opaque
};

// One channel of a pixel, spread to 8 bits.
class MaskedChannel
{
public:
    explicit MaskedChannel(std::uint32_t mask);

    std::uint8_t Of(std::uint32_t pixel) const { return m_spread[(pixel & m_mask) >> m_shift]; }

private:
    std::uint32_t m_mask = 0;
    int m_shift = 0;
    std::array<std::uint8_t, 256> m_spread{};
};

class MaskedPixels
{
public:
    // `pixelBytes` is 1 to 4. Any masks will do.
    MaskedPixels(std::size_t pixelBytes, const ChannelMasks &masks);

    bool HasAlpha() const { return m_hasAlpha; }

    // Spreads the whole pixels of `row`, stored low byte first, at most `width` of them, into B, G, R, A.
    void SpreadRow(Bytes row, std::int32_t width, std::uint8_t *target) const;

private:
    std::size_t m_pixelBytes;
    bool m_hasAlpha;
    MaskedChannel m_red;
    MaskedChannel m_green;
    MaskedChannel m_blue;
    MaskedChannel m_alpha;
};

} // namespace rastgl
