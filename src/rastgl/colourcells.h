// The colours of a picture, counted: the histogram that colour reduction works on instead of the pixels.
#pragma once

#include "rastgl/colour.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace rastgl
{

// The pixels of a picture whose colours are alike.
struct ColourCell {
    std::uint64_t pixels = 0;
    std::array<std::uint64_t, 4> sums = {}; // of the premultiplied channels

    void Add(Colour premultiplied)
    {
        ++pixels;
        for (std::size_t channel = 0; channel < 4; ++channel)
            sums[channel] += Channel(premultiplied, channel);
    }

    void Add(const ColourCell &other)
    {
        pixels += other.pixels;
        for (std::size_t channel = 0; channel < 4; ++channel)
            sums[channel] += other.sums[channel];
    }
};

// At most MaxCells cells over the premultiplied colours. Each cell holds one colour until there are too many;
// then the low bits of one channel after another are dropped from the keys until they fit. Opaque colours
// never share a cell with translucent ones.
class ColourCells
{
public:
    static constexpr std::size_t MaxCells = 12'288;

    ColourCells();

    void Add(Colour premultiplied) { m_cells[FindOrInsert(premultiplied)].Add(premultiplied); }

    std::size_t Count() const { return m_cells.size(); }
    const ColourCell &operator[](std::size_t cell) const { return m_cells[cell]; }

    // The cell of a colour that was added before.
    std::size_t Find(Colour premultiplied) const { return m_slots[SlotOf(KeyOf(premultiplied))]; }

    // The bounds of a cell's premultiplied colours in every channel.
    Colour Lowest(std::size_t cell) const { return m_keys[cell]; }
    Colour Highest(std::size_t cell) const { return m_keys[cell] | ~m_mask; }
    bool IsOpaque(std::size_t cell) const { return rastgl::IsOpaque(m_keys[cell]); }

private:
    static constexpr unsigned SlotBits = 15;
    static constexpr std::uint16_t Free = 0xFFFF;

    Colour KeyOf(Colour colour) const
    {
        return (colour & m_mask) | (rastgl::IsOpaque(colour) ? OpaqueAlpha : 0);
    }
    void Clear();
    std::size_t SlotOf(Colour key) const;
    std::size_t FindOrInsert(Colour colour);
    std::size_t Insert(Colour key, std::size_t slot);
    void Coarsen();

    std::vector<std::uint16_t> m_slots;
    std::vector<Colour> m_keys;
    std::vector<ColourCell> m_cells;
    Colour m_mask = 0xFFFFFFFFU;
    unsigned m_dropped = 0; // bits dropped from the keys, all channels together
};

inline std::size_t ColourCells::SlotOf(Colour key) const
{
    std::size_t slot = (key * 0x9E3779B1U) >> (32 - SlotBits);
    while (m_slots[slot] != Free && m_keys[m_slots[slot]] != key)
        slot = (slot + 1) % (std::size_t(1) << SlotBits);
    return slot;
}

inline std::size_t ColourCells::FindOrInsert(Colour colour)
{
    for (;;) {
        const Colour key = KeyOf(colour);
        const std::size_t slot = SlotOf(key);
        if (m_slots[slot] != Free)
            return m_slots[slot];
        if (m_keys.size() < MaxCells)
            return Insert(key, slot);
        Coarsen();
    }
}

} // namespace rastgl
