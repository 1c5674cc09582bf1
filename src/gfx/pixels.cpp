#include "gfx/pixels.h"

#include "gfx/graphicslibrary.h"

#include <algorithm>

namespace wb
{

std::int64_t PictureBytes(std::int64_t width, std::int64_t height)
{
    if (width <= 0 || height <= 0 || width > MaxPicturePixels / height)
        return 0;
    return width * height * 4;
}

bool HoldsPicture(const FrameBuf &picture)
{
    const std::int64_t bytes = PictureBytes(picture.Width, picture.Height);
    return bytes != 0 && std::int64_t(picture.Pixels.size()) == bytes;
}

void FlipRows(FrameBuf &picture)
{
    if (!HoldsPicture(picture))
        return;
    const std::size_t pitch = std::size_t(picture.Width) * 4;
    std::uint8_t *low = picture.Pixels.data();
    std::uint8_t *high = low + picture.Pixels.size() - pitch;
    for (; low < high; low += pitch, high -= pitch)
        std::swap_ranges(low, low + pitch, high);
}

FrameBuf DibToFrameBuf(std::int32_t handle)
{
    const GraphicsLibrary &graphics = Graphics();
    FrameBuf picture;
    const std::int32_t width = graphics.VTGF_DIB_GetWidth(handle);
    const std::int32_t height = graphics.VTGF_DIB_GetHeight(handle);
    const auto bytes = static_cast<std::int32_t>(PictureBytes(width, height));
    if (bytes == 0)
        return picture;
    picture.Width = width;
    picture.Height = height;
    picture.Pixels.resize(std::size_t(bytes));
    graphics.VTGF_DIB_CopyBuf(picture.Pixels.data(), &bytes, handle);
    return picture;
}

std::int32_t FrameBufToDib(const FrameBuf &picture)
{
    if (!HoldsPicture(picture))
        return 0;
    const std::int32_t bitsPerPixel = 32;
    return Graphics().VTGF_Read_Buf(picture.Pixels.data(), &picture.Width, &picture.Height, &bitsPerPixel);
}

} // namespace wb
