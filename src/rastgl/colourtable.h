// The 256 colours that indexes stand for.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace rastgl
{

class ColourTable
{
public:
    // Colours as pixels read as little-endian numbers.
    explicit ColourTable(const std::array<std::uint32_t, 256> &colours);

    std::uint32_t operator[](std::uint8_t index) const { return m_colours[index]; }

    // Writes the pixels (B, G, R, A) of a run of indexes.
    void Expand(std::uint8_t *pixels, const std::uint8_t *indexes, std::size_t count) const
    {
        m_expand(*this, pixels, indexes, count);
    }

private:
    using ExpandFunction = void (*)(const ColourTable &, std::uint8_t *, const std::uint8_t *, std::size_t);

    static void ExpandPlain(const ColourTable &table, std::uint8_t *pixels, const std::uint8_t *indexes,
                            std::size_t count);
    static void ExpandVbmi(const ColourTable &table, std::uint8_t *pixels, const std::uint8_t *indexes,
                           std::size_t count);

    std::array<std::uint32_t, 256> m_colours;
    alignas(64) std::array<std::array<std::uint8_t, 256>, 4> m_channels; // the same, each channel by itself
    ExpandFunction m_expand;
};

} // namespace rastgl
