#include "rastgl/nearestentry.h"

#include <algorithm>
#include <limits>

namespace rastgl
{

NearestEntry::NearestEntry(std::span<const PaletteEntry> entries) : m_entries(entries.begin(), entries.end())
{
    for (std::size_t entry = 0; entry < m_entries.size(); ++entry) {
        const PaletteEntry &from = m_entries[entry];
        const std::size_t first = m_neighbours.size();
        for (std::size_t other = 0; other < m_entries.size(); ++other) {
            if (other == entry || m_entries[other].opaque != from.opaque)
                continue;
            const float distance = DistanceSquared(from.at, m_entries[other].at);
            if (distance < 4 * from.reach)
                m_neighbours.push_back({distance, std::uint32_t(other)});
        }
        std::sort(m_neighbours.begin() + std::ptrdiff_t(first), m_neighbours.end(),
                  [](const Neighbour &a, const Neighbour &b) {
                      return a.distance != b.distance ? a.distance < b.distance : a.entry < b.entry;
                  });
        m_neighbours.push_back({std::numeric_limits<float>::infinity(), 0});
        m_first.push_back(first);
    }
}

void NearestEntry::AppendRivals(const Box &box, std::size_t start, std::vector<std::uint8_t> &rivals) const
{
    const Position &from = m_entries[start].at;
    const float limit = 4 * FarthestSquared(from, box);
    for (const Neighbour *neighbour = &m_neighbours[m_first[start]]; neighbour->distance < limit;
         ++neighbour) {
        // The corner that lies farthest in the rival's direction decides for the whole box.
        const Position &rival = m_entries[neighbour->entry].at;
        Position corner = {};
        for (std::size_t axis = 0; axis < 4; ++axis)
            corner[axis] = rival[axis] > from[axis] ? box.highest[axis] : box.lowest[axis];
        if (DistanceSquared(corner, rival) <= DistanceSquared(corner, from))
            rivals.push_back(std::uint8_t(neighbour->entry));
    }
}

} // namespace rastgl
