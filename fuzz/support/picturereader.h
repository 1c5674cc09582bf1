// A reader of common picture files as a target.
#pragma once

#include "fuzz/support/target.h"

#include "gfx/graphicslibrary.h"
#include "gfx/pixels.h"

namespace wb
{

using PictureReader = std::int32_t (*GraphicsLibrary::*)(const std::uint8_t *, const std::int32_t *);

// True when the file holds a picture.
inline bool FuzzPicture(ByteView bytes, PictureReader read)
{
    constexpr std::int64_t MostCopied = 1 << 14; // a larger picture would take the time of many files

    const auto length = std::int32_t(bytes.size());
    const std::int32_t handle = (Graphics().*read)(bytes.data(), &length);
    if (handle == 0)
        return false;
    const std::int64_t size =
        PictureBytes(Graphics().VTGF_DIB_GetWidth(handle), Graphics().VTGF_DIB_GetHeight(handle));
    Require(size > 0 && (size > MostCopied || HoldsPicture(DibToFrameBuf(handle))),
            "a handle names a picture");
    Graphics().VTGF_DIB_Free(handle);
    return true;
}

} // namespace wb
