#include "rastgl/maskedpixels.h"

#include <algorithm>
#include <bit>

namespace rastgl
{

// Of a channel wider than 8 bits the highest 8 are used.
MaskedChannel::MaskedChannel(std::uint32_t mask)
{
    if (mask == 0)
        return;
    const int width = std::bit_width(mask) - std::countr_zero(mask);
    m_mask = mask;
    m_shift = std::countr_zero(mask) + std::max(width - 8, 0);
    const std::uint32_t most = mask >> m_shift;
    for (std::uint32_t value = 0; value <= most; ++value)
        m_spread[value] = std::uint8_t((value * 255 + most / 2) / most);
}

MaskedPixels::MaskedPixels(std::size_t pixelBytes, const ChannelMasks &masks)
    : m_pixelBytes(pixelBytes), m_hasAlpha(masks.alpha != 0), m_red(masks.red), m_green(masks.green),
      m_blue(masks.blue), m_alpha(masks.alpha)
{
}

void MaskedPixels::SpreadRow(Bytes row, std::int32_t width, std::uint8_t *target) const
{
    const std::size_t count = std::min(row.size() / m_pixelBytes, std::size_t(width));
    const std::uint8_t *source = row.data();
    for (std::size_t x = 0; x < count; ++x, target += 4) {
        std::uint32_t pixel = 0;
        for (std::size_t byte = 0; byte < m_pixelBytes; ++byte)
            pixel |= std::uint32_t(*source++) << (8 * byte);
        target[0] = m_blue.Of(pixel);
        target[1] = m_green.Of(pixel);
        target[2] = m_red.Of(pixel);
        target[3] = m_hasAlpha ? m_alpha.Of(pixel) : 255;
    }
}

} // namespace rastgl
