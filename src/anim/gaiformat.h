// The GAI file, an animation: a box and the GI pictures that are shown in it one after another.
//
//   offset  bytes
//        0      4  magic: "gai" and a zero byte
//        4      4  version: 1 is written, anything is read
//        8     16  left, top, right, bottom of the box; a left or top above 16777215 reads as 0
//       24      4  number of frames, n
//       28      4  1 when the frames are drawn over a background, which is a GI file of its own; else 0
//       32      4  offset of the delay table; 0 when n < 2; is not read
//       36      4  its length, likewise
//       40      8  0
//       48    8 n  the frame table: offset and length of each frame's data; 0, 0 for a frame without any
//     48+8n     18  the delay table, when n >= 2: 1, 12, 14, two zero bytes, n
//     66+8n    8 n  and for each frame its index and how long it is shown; all but the latter is not read
//        -      -  the data of the frames: a GI (gi/giformat.h) or a ZL block of one (archive/zlblock.h)
//
// Every number is a signed little-endian 32-bit integer; offsets count from the first byte of the file. The
// pictures lie in the same coordinates as the box.
#pragma once

#include "common/bytearray.h"
#include "gi/giformat.h"

#include <cstdint>
#include <optional>

namespace wb
{

inline constexpr std::int32_t GaiMagic = 0x00696167;
inline constexpr std::int32_t GaiVersion = 1;
inline constexpr std::int32_t GaiHeaderSize = 48;
inline constexpr std::int32_t GaiFrameRecordSize = 8;
inline constexpr std::int32_t GaiDelayHeadSize = 18;
inline constexpr std::int32_t GaiDelayRecordSize = 8;

// Where the parts of a file of `count` frames lie, the data of the frames last.
constexpr std::int64_t GaiFrameRecordAt(std::int64_t frame)
{
    return GaiHeaderSize + frame * GaiFrameRecordSize;
}
constexpr std::int64_t GaiDelayTableAt(std::int64_t count)
{
    return GaiFrameRecordAt(count);
}
constexpr std::int64_t GaiDelayRecordAt(std::int64_t count, std::int64_t frame)
{
    return GaiDelayTableAt(count) + GaiDelayHeadSize + frame * GaiDelayRecordSize;
}
constexpr std::int64_t GaiDataAt(std::int64_t count)
{
    return count < 2 ? GaiDelayTableAt(count) : GaiDelayRecordAt(count, count);
}

struct GaiHeader {
    GiRect Box;
    std::int32_t FrameCount = 0; // no more than the bytes of the file are enough to list
    std::int32_t Background = 0;
};

struct GaiFrame {
    std::int32_t Offset = 0;
    std::int32_t Length = 0;
    std::int32_t Delay = 0; // 0 in a file of one frame
};

// The header of a file; nothing when no whole one with the magic is there.
std::optional<GaiHeader> ReadGaiHeader(ByteView file);

// What the tables say of the frame `index`, 0 to FrameCount - 1. A delay that the file lacks is 0.
GaiFrame ReadGaiFrame(ByteView file, const GaiHeader &header, std::int32_t index);

} // namespace wb
