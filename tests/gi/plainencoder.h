// The GI encoder step by step, pixel by pixel: slow, and simple enough to be believed.
#pragma once

#include "gfx/framebuf.h"

namespace wb::test
{

ByteArray EncodePlainly(const FrameBuf &picture, std::int32_t type, std::int32_t transClass, bool crop);

} // namespace wb::test
