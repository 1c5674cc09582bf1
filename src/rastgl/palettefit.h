// Finds the palette that a picture of many colours is reduced to.
#pragma once

#include "rastgl/colourcells.h"
#include "rastgl/nearestentry.h"
#include "rastgl/variancecut.h"

#include <cstdint>
#include <limits>
#include <vector>

namespace rastgl
{

// The entries of a palette, and for each cell of colours those that may be the nearest to one of them.
class CellPalette
{
public:
    // Cell i lies in boxes[i]; groups give an entry from which the search for its nearest starts.
    CellPalette(std::vector<PaletteEntry> entries, const Groups &groups, std::span<const Box> boxes);

    std::size_t EntryCount() const { return m_entries.size(); }

    // Whether one entry is the nearest to all colours of the cell: First() then tells it.
    bool Sure(std::size_t cell) const { return m_first[cell + 1] - m_first[cell] == 1; }
    std::uint8_t First(std::size_t cell) const { return m_candidates[m_first[cell]]; }

    // The entry nearest to a premultiplied colour of the cell, of the cell's kind (opaque or translucent).
    std::uint8_t Nearest(std::size_t cell, Colour colour) const
    {
        const Position at = ToPosition(colour);
        std::uint8_t nearest = 0;
        float least = std::numeric_limits<float>::infinity();
        for (std::uint32_t i = m_first[cell]; i < m_first[cell + 1]; ++i) {
            const float distance = DistanceSquared(at, m_entries[m_candidates[i]].at);
            if (distance < least) {
                least = distance;
                nearest = m_candidates[i];
            }
        }
        return nearest;
    }

private:
    std::vector<PaletteEntry> m_entries;
    std::vector<std::uint8_t> m_candidates; // of all cells, one after the other
    std::vector<std::uint32_t> m_first;     // where a cell's candidates begin; one more for the end
};

// At most `limit` (2 to 256) entries: a variance cut over the cells, refined by k-means.
CellPalette FitPalette(const ColourCells &cells, std::size_t limit);

} // namespace rastgl
