// The first guess at a palette: a variance cut.
#pragma once

#include "rastgl/colour.h"

#include <cstdint>
#include <span>
#include <vector>

namespace rastgl
{

// All pixels of one colour, or of like colours.
struct WeightedPosition {
    Position at = {};
    float weight = 0; // pixels
    bool opaque = false;
};

struct Groups {
    std::vector<std::uint8_t> ofColour; // one for each colour
    std::size_t count = 0;
};

// Divides the colours into at most `limit` (2 to 256) groups: always the group whose division into two lowers
// the sum of squared distances to the groups' means most, across the best plane that is square to an axis. No
// group mixes opaque colours with translucent ones.
Groups CutByVariance(std::span<const WeightedPosition> colours, std::size_t limit);

} // namespace rastgl
