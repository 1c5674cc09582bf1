// How far a picture can be dragged inside its frame.
#pragma once

#include <cstdint>

namespace wb
{

// Where one edge (left or top) of a picture of `length` goes that is dragged to `proposed` inside a frame of
// `inner`, from where it is now: it moves until the picture's edges meet the frame's; a picture that fits
// does not move.
constexpr std::int32_t PannedEdge(std::int32_t current, std::int32_t proposed, std::int32_t length,
                                  std::int32_t inner)
{
    if (proposed <= 0 && length + proposed + 1 > inner)
        return proposed;
    if (proposed >= 1 && length > inner)
        return 0;
    if (length > inner && length + proposed < inner)
        return inner - length;
    return current;
}

} // namespace wb
