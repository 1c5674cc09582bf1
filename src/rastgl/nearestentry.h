// Finds the nearest palette entry to a colour without comparing it with every entry.
#pragma once

#include "rastgl/colour.h"

#include <cstdint>
#include <span>
#include <vector>

namespace rastgl
{

struct PaletteEntry {
    Position at = {};
    bool opaque = false;
    float reach = 0; // squared: searches that start at this entry are for places no farther from it
};

// Keeps for each entry the others of its kind (opaque or translucent) in the order of their distance. A
// search starts at an entry that is probably the nearest and ends with the first neighbour that is more than
// twice as far from it as the colour is: by the triangle inequality nothing beyond can be nearer.
class NearestEntry
{
public:
    explicit NearestEntry(std::span<const PaletteEntry> entries);

    // The entry nearest to `colour` of the same kind as `start`; the first found of several equally near.
    std::size_t Find(const Position &colour, std::size_t start) const
    {
        std::size_t nearest = start;
        float least = DistanceSquared(colour, m_entries[start].at);
        const float limit = 4 * least;
        for (const Neighbour *neighbour = &m_neighbours[m_first[start]]; neighbour->distance < limit;
             ++neighbour) {
            const float distance = DistanceSquared(colour, m_entries[neighbour->entry].at);
            if (distance < least) {
                least = distance;
                nearest = neighbour->entry;
            }
        }
        return nearest;
    }

    // Appends to `rivals` every entry of the kind of `start` that may be nearer than it to a place in the
    // box.
    void AppendRivals(const Box &box, std::size_t start, std::vector<std::uint8_t> &rivals) const;

private:
    struct Neighbour {
        float distance; // squared, from the entry whose list it is in; infinite behind the last one
        std::uint32_t entry;
    };

    std::vector<PaletteEntry> m_entries;
    std::vector<std::size_t> m_first; // where an entry's neighbours begin
    std::vector<Neighbour> m_neighbours;
};

} // namespace rastgl
