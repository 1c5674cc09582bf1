#include "rastgl/colourtable.h"

#include "rastgl/cpu.h"
#include "rastgl/rows565.h"

namespace rastgl
{

ColourTable::ColourTable(const std::array<std::uint32_t, 256> &colours)
    : m_colours(colours), m_expand(ExpandPlain)
{
#if WB_X86_CHOICE
    static const bool hasVbmi = wb::HasVbmi();
    if (!hasVbmi)
        return;
    m_expand = ExpandVbmi;
    for (std::size_t i = 0; i < colours.size(); i++)
        for (std::size_t channel = 0; channel < m_channels.size(); channel++)
            m_channels[channel][i] = static_cast<std::uint8_t>(colours[i] >> (8 * channel));
#endif
}

void ColourTable::ExpandPlain(const ColourTable &table, std::uint8_t *pixels, const std::uint8_t *indexes,
                              std::size_t count)
{
    for (std::size_t i = 0; i < count; i++)
        wb::Store32(pixels + i * 4, table.m_colours[indexes[i]]);
}

#if WB_X86_CHOICE

namespace
{

constexpr std::size_t Block = 64;

// One channel of 64 indexes: two look-ups of 128 entries, of which the index's high bit takes one.
WB_VBMI inline __m512i LookUp(const std::array<std::uint8_t, 256> &channel, __m512i indexes, __mmask64 high)
{
    const auto part = [&channel](int quarter)
                          WB_VBMI { return _mm512_load_si512(channel.data() + quarter * 64); };
    return _mm512_mask_blend_epi8(high, _mm512_permutex2var_epi8(part(0), indexes, part(1)),
                                  _mm512_permutex2var_epi8(part(2), indexes, part(3)));
}

} // namespace

WB_VBMI void ColourTable::ExpandVbmi(const ColourTable &table, std::uint8_t *pixels,
                                     const std::uint8_t *indexes, std::size_t count)
{
    // Interleaving works within 128 bits: with groups of four indexes exchanged like this, pixels come out in
    // order.
    const __m512i order = _mm512_setr_epi32(0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15);
    for (std::size_t i = 0; i < count; i += Block) {
        const std::size_t left = count - i;
        const __mmask64 present = left >= Block ? ~__mmask64(0) : (__mmask64(1) << left) - 1;
        // All are wanted; the form without a mask makes GCC 12 warn of its own header.
        const __m512i loaded = _mm512_maskz_loadu_epi8(present, indexes + i);
        const __m512i some = _mm512_maskz_permutexvar_epi32(0xFFFF, order, loaded);
        const __mmask64 high = _mm512_movepi8_mask(some);
        const __m512i b = LookUp(table.m_channels[0], some, high);
        const __m512i g = LookUp(table.m_channels[1], some, high);
        const __m512i r = LookUp(table.m_channels[2], some, high);
        const __m512i a = LookUp(table.m_channels[3], some, high);
        const __m512i bgLow = _mm512_unpacklo_epi8(b, g);
        const __m512i bgHigh = _mm512_unpackhi_epi8(b, g);
        const __m512i raLow = _mm512_unpacklo_epi8(r, a);
        const __m512i raHigh = _mm512_unpackhi_epi8(r, a);
        std::uint8_t *to = pixels + i * 4;
        _mm512_mask_storeu_epi32(to, __mmask16(present), _mm512_unpacklo_epi16(bgLow, raLow));
        _mm512_mask_storeu_epi32(to + 64, __mmask16(present >> 16), _mm512_unpackhi_epi16(bgLow, raLow));
        _mm512_mask_storeu_epi32(to + 128, __mmask16(present >> 32), _mm512_unpacklo_epi16(bgHigh, raHigh));
        _mm512_mask_storeu_epi32(to + 192, __mmask16(present >> 48), _mm512_unpackhi_epi16(bgHigh, raHigh));
    }
}

#endif

} // namespace rastgl
