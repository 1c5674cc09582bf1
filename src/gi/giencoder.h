// Writes GI pictures.
#pragma once

#include "gfx/framebuf.h"

#include <cstdint>
#include <functional>

namespace wb
{

// Makes `out` the GI of the picture and gives its length in bytes. Its capacity is kept over calls.
//
// `transClass` is the picture's transparency class: 0 every pixel opaque, 1 opaque or fully transparent, 2
// some partly transparent. `crop` cuts each layer of types 0 to 3 to the bounds of its pixels that have any
// alpha (class 1 and 2). `yield` is called after each layer; the picture and `out` must stay as they are
// until all is done.
//
// Gives 0 and leaves `out` as it is for an empty picture and for what has no coding: types above 4, and types
// 1 to 4 of class 0.
std::int32_t EncodeGi(ByteArray &out, const FrameBuf &picture, std::int32_t type, std::int32_t transClass,
                      bool crop, const std::function<void()> &yield = {});

// The part of a 32-bit picture within the bounds of its pixels that have any alpha, at its place on the
// canvas. It carries place, size and pixels only; empty, with all fields zero, when no pixel has any.
FrameBuf CropToContent(const FrameBuf &layer);

} // namespace wb
