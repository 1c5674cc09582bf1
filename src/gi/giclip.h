// Makes any run-coded layer one that can be drawn without looking.
#pragma once

#include "common/bytearray.h"

#include <cstdint>

namespace wb
{

// The part of a layer to keep, in its own columns and rows.
struct LayerPart {
    std::int64_t Left = 0;
    std::int64_t Top = 0;
    std::int64_t Width = 0;
    std::int64_t Height = 0;
};

// Codes that part as a layer of its own, with the same palette and with as many rows as `layer` holds. Never
// longer than `layer`, which has its header and the palette's bytes. PixelBytes is 1 or 2.
template <int PixelBytes>
ByteArray ClipLayer(ByteView layer, std::size_t paletteBytes, const LayerPart &part);

} // namespace wb
