// The GI file: header, layer table, and what both hold.
//
//   offset  bytes
//        0      4  magic: "gi" and two zero bytes
//        4      4  version: 1 is written, anything is read
//        8     16  left, top, right, bottom of the picture on its canvas
//       24     16  red, green, blue and alpha mask: one of the two sets below
//       40      4  type, 0..6
//       44      4  number of layers
//       48     16  0
//       64   32 n  the layer table: data offset, data size, left, top, right, bottom, 8 zero bytes each
//        -      -  the data of the layers
//
// Offsets count from the first byte of the GI; every number is a signed little-endian 32-bit integer.
//
//   type  layers
//      0  1: a plane of 5-6-5 or 32-bit pixels, top row first
//      1  1: run-coded opaque colours
//      2  3: run-coded opaque colours; of the partly transparent pixels, premultiplied colours; transparency
//      3  2: run-coded palette indexes of the opaque pixels; of the partly transparent ones
//      4  2: a plane of palette indexes, top row first; 256 palette entries R, G, B, A
//   5, 6  1: of unknown layout
//
// rastgl/rowrle.h has the layout of run-coded layers.
#pragma once

#include "common/bytearray.h"

#include <array>
#include <cstdint>
#include <optional>

namespace wb
{

inline constexpr std::int32_t GiMagic = 0x00006967;
inline constexpr std::int32_t GiVersion = 1;
inline constexpr std::int32_t GiHeaderSize = 64;
inline constexpr std::int32_t GiLayerRecordSize = 32;
inline constexpr std::int32_t GiPaletteSize = 1024; // of type 4
inline constexpr std::int32_t MaxGiType = 6;
inline constexpr std::int32_t MaxGiLayers = 3; // no type has more; records beyond are not looked at

struct GiRect {
    std::int32_t Left = 0;
    std::int32_t Top = 0;
    std::int32_t Right = 0;
    std::int32_t Bottom = 0;

    std::int64_t Width() const { return std::int64_t(Right) - Left; }
    std::int64_t Height() const { return std::int64_t(Bottom) - Top; }
    bool IsEmpty() const { return Width() <= 0 || Height() <= 0; }
    bool operator==(const GiRect &) const = default;
};

struct PixelMasks {
    std::int32_t Red = 0;
    std::int32_t Green = 0;
    std::int32_t Blue = 0;
    std::int32_t Alpha = 0;

    bool operator==(const PixelMasks &) const = default;
};

inline constexpr PixelMasks Masks565 = {0xF800, 0x07E0, 0x001F, 0};
inline constexpr PixelMasks Masks8888 = {0x00FF0000, 0x0000FF00, 0x000000FF,
                                         static_cast<std::int32_t>(0xFF000000)};

struct GiLayer {
    std::int32_t DataOffset = 0;
    std::int32_t DataSize = 0;
    GiRect Bounds;
    ByteView Data; // no bytes when the layer is absent, or its data does not lie inside the buffer
};

struct GiHeader {
    std::int32_t Version = 0;
    GiRect Bounds;
    PixelMasks Masks;
    std::int32_t Type = 0;
    std::int32_t LayerCount = 0;               // as the file says
    std::array<GiLayer, MaxGiLayers> Layers{}; // those that the file lacks are absent
};

// Layers of each type; 0 for a number that is no type.
std::int32_t GiLayerCount(std::int32_t type);

// Whether a picture of this transparency class can be written as this type: type 0 always, type 1 with on/off
// transparency, types 2 to 4 with any.
bool GiTypeAllowed(std::int32_t type, std::int32_t transClass);

// The header of the GI that starts at `offset`, with views of its layers' data. Nothing when no whole header
// with the magic is there. A layer's left or top above 16777215 reads as 0.
std::optional<GiHeader> ReadGiHeader(ByteView buffer, std::int64_t offset);

// Gives the GI in `gi` that place and size, and moves every layer record that the file holds, also of absent
// layers, as far as the header's left and top. A number that would leave the range of 32 bits becomes the end
// of that range. Bytes that are no GI stay as they are.
void MoveGi(ByteArray &gi, std::int32_t left, std::int32_t top, std::int64_t width, std::int64_t height);

} // namespace wb
