#include "widgets/dibimage.h"

#include "gfx/graphicslibrary.h"
#include "gfx/pixels.h"

namespace wb
{

namespace
{

// To be drawn on as a whole; a null image for no size or when memory is short.
QImage NewImage(int width, int height)
{
    return QImage(width, height, QImage::Format_RGB32);
}

RastGlSurface SurfaceOf(QImage &image)
{
    return {image.bits(), image.width(), image.height(), static_cast<std::int32_t>(image.bytesPerLine())};
}

} // namespace

QImage ImageFromDib(std::int32_t handle)
{
    const FrameBuf picture = DibToFrameBuf(handle);
    if (picture.Pixels.empty())
        return {};
    // QImage's ARGB32 is B, G, R, A in memory on the little-endian machines we run on; its rows come top row
    // first.
    const QImage pixels(picture.Pixels.data(), picture.Width, picture.Height, QImage::Format_ARGB32);
    // A single pixel is mirrored without being copied.
    return pixels.height() > 1 ? pixels.mirrored() : pixels.copy();
}

QImage ComposedImage(std::int32_t handle, std::int32_t backColour)
{
    QImage image = NewImage(Graphics().VTGF_DIB_GetWidth(handle), Graphics().VTGF_DIB_GetHeight(handle));
    if (image.isNull())
        return image;
    const RastGlSurface surface = SurfaceOf(image);
    Graphics().VTGF_DIB_DrawFast(&surface, 0, 0, handle, backColour);
    return image;
}

QImage ComposedImage(const FrameBuf &picture, std::int32_t backColour)
{
    QImage image = NewImage(picture.Width, picture.Height);
    if (image.isNull())
        return image;
    const RastGlSurface surface = SurfaceOf(image);
    Graphics().VTGF_DrawBuf_Fast_32(&surface, 0, 0, picture.Pixels.data(), &picture.Width, &picture.Height,
                                    backColour);
    return image;
}

} // namespace wb
