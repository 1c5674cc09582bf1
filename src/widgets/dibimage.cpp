#include "widgets/dibimage.h"

#include "gfx/graphicslibrary.h"
#include "gfx/pixels.h"

namespace wb
{

QImage ImageFromDib(std::int32_t handle)
{
    const FrameBuf picture = DibToFrameBuf(handle);
    if (picture.Pixels.empty())
        return {};
    // QImage's ARGB32 is B, G, R, A in memory on the little-endian machines we run on; its rows come top row
    // first.
    return QImage(picture.Pixels.data(), picture.Width, picture.Height, QImage::Format_ARGB32).mirrored();
}

QImage ComposedImage(std::int32_t handle, std::int32_t backColour)
{
    QImage image(Graphics().VTGF_DIB_GetWidth(handle), Graphics().VTGF_DIB_GetHeight(handle),
                 QImage::Format_RGB32);
    if (image.isNull())
        return image;
    const RastGlSurface surface{image.bits(), image.width(), image.height(),
                                static_cast<std::int32_t>(image.bytesPerLine())};
    Graphics().VTGF_DIB_DrawFast(&surface, 0, 0, handle, backColour);
    return image;
}

} // namespace wb
