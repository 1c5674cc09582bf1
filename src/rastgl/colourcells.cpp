#include "rastgl/colourcells.h"

#include <utility>

namespace rastgl
{

namespace
{

// The channels in the order in which they lose a bit: the eye misses it least in blue, most in green.
constexpr std::array<unsigned, 4> DropOrder = {0, 2, 3, 1};

} // namespace

ColourCells::ColourCells()
{
    Clear();
}

void ColourCells::Clear()
{
    m_slots.assign(std::size_t(1) << SlotBits, Free);
    m_keys.reserve(MaxCells);
    m_cells.reserve(MaxCells);
}

std::size_t ColourCells::Insert(Colour key, std::size_t slot)
{
    const std::size_t cell = m_keys.size();
    m_slots[slot] = std::uint16_t(cell);
    m_keys.push_back(key);
    m_cells.emplace_back();
    return cell;
}

void ColourCells::Coarsen()
{
    const unsigned channel = DropOrder[m_dropped % DropOrder.size()];
    const unsigned bit = m_dropped / DropOrder.size();
    m_mask &= ~(1U << (8 * channel + bit));
    ++m_dropped;

    const std::vector<Colour> finerKeys = std::exchange(m_keys, {});
    const std::vector<ColourCell> finerCells = std::exchange(m_cells, {});
    Clear();
    for (std::size_t cell = 0; cell < finerKeys.size(); ++cell)
        m_cells[FindOrInsert(finerKeys[cell])].Add(finerCells[cell]);
}

} // namespace rastgl
