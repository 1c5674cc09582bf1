// A reader of common picture files as a target.
#pragma once

#include "fuzz/support/target.h"

#include "gfx/graphicslibrary.h"
#include "gfx/pixels.h"

namespace wb
{

using PictureReader = std::int32_t (*GraphicsLibrary::*)(const std::uint8_t *, const std::int32_t *);

inline void FuzzPicture(ByteView bytes, PictureReader read)
{
    const auto length = std::int32_t(bytes.size());
    const std::int32_t handle = (Graphics().*read)(bytes.data(), &length);
    if (handle == 0)
        return;
    const FrameBuf picture = DibToFrameBuf(handle);
    Graphics().VTGF_DIB_Free(handle);
    Require(HoldsPicture(picture), "a handle names a picture");
}

} // namespace wb
