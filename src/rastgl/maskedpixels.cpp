#include "rastgl/maskedpixels.h"

#include <algorithm>
#include <bit>

namespace rastgl
{

// Of a channel wider than 8 bits the highest 8 are used; a narrower one repeats its bits below.
MaskedChannel::MaskedChannel(std::uint32_t mask)
{
    if (mask == 0)
        return;
    const int fullWidth = std::bit_width(mask) - std::countr_zero(mask);
    const int width = std::min(fullWidth, 8);
    m_mask = mask;
    m_shift = std::countr_zero(mask) + fullWidth - width;
    for (unsigned value = 0; value < 1U << width; ++value) {
        for (int shift = 8 - width; shift > -width; shift -= width)
            m_spread[value] |= std::uint8_t(shift >= 0 ? value << shift : value >> -shift);
    }
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
