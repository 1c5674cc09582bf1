// Pictures as Qt's images.
#pragma once

#include "gfx/framebuf.h"

#include <QImage>

#include <cstdint>

namespace wb
{

// The picture with its transparency; a null image for no picture.
QImage ImageFromDib(std::int32_t handle);

// The picture composed over a platform colour value; a null image for no picture or when memory is short.
QImage ComposedImage(std::int32_t handle, std::int32_t backColour);
QImage ComposedImage(const FrameBuf &picture, std::int32_t backColour);

} // namespace wb
