// The HAI file: an animation of small indexed pictures, which has neither places nor delays.
//
//   offset  bytes
//        0      4  magic: 0x04210420
//        4      8  width and height of the frames: 128 is written, anything is read
//       12      4  128
//       16      4  number of frames
//       20      4  the step from one frame to the next: 17408 is written, anything is read
//       24      8  1, 8
//       32     16  0
//       48      4  length of a frame's palette in bytes: 1024 is written, anything is read
//       52      -  the frames: an index byte a pixel, top row first, then the palette, R, G, B, A an entry
//
// Every number is a signed little-endian 32-bit integer. The magic, and what is said here without a name, is
// not read.
#pragma once

#include "common/bytearray.h"

#include <cstdint>
#include <optional>

namespace wb
{

inline constexpr std::int32_t HaiMagic = 0x04210420;
inline constexpr std::int32_t HaiHeaderSize = 52;

// What is written.
inline constexpr std::int32_t HaiSide = 128; // width and height
inline constexpr std::int32_t HaiPixelBytes = HaiSide * HaiSide;
inline constexpr std::int32_t HaiPaletteBytes = 1024;
inline constexpr std::int32_t HaiFrameBytes = HaiPixelBytes + HaiPaletteBytes;

// As the file has it, but for the number of frames.
struct HaiHeader {
    std::int32_t Width = 0;
    std::int32_t Height = 0;
    std::int32_t FrameCount = 0; // not negative, and no more than the file has bytes
    std::int32_t FrameStep = 0;
    std::int32_t PaletteBytes = 0;
};

// The header of a file; nothing when no whole one is there.
std::optional<HaiHeader> ReadHaiHeader(ByteView file);

constexpr std::int64_t HaiFrameAt(const HaiHeader &header, std::int64_t frame)
{
    return HaiHeaderSize + frame * header.FrameStep;
}

} // namespace wb
