#include "anim/haiframe.h"

#include "anim/haiformat.h"
#include "gfx/graphicslibrary.h"
#include "gfx/pixels.h"

#include <utility>

namespace wb
{

namespace
{

constexpr std::int32_t Side = HaiSide;

} // namespace

bool IsIndexed(const FrameBuf &picture)
{
    const std::int64_t pixels = PictureBytes(picture.Width, picture.Height) / 4;
    return pixels != 0 && picture.PaletteSize > 0 && std::int64_t(picture.Pixels.size()) == pixels &&
           std::int64_t(picture.Palette.size()) == picture.PaletteSize;
}

FrameBuf ScaledToHai(FrameBuf picture)
{
    if (!HoldsPicture(picture))
        return {};
    if (picture.Width == Side && picture.Height == Side)
        return picture;
    FrameBuf scaled;
    scaled.Width = scaled.Height = Side;
    scaled.Pixels.resize(HaiPixelBytes * 4);
    Graphics().VTGF_Rescale(scaled.Pixels.data(), &Side, &Side, picture.Pixels.data(), &picture.Width,
                            &picture.Height);
    return scaled;
}

FrameBuf MakeHaiFrame(FrameBuf picture)
{
    const FrameBuf scaled = ScaledToHai(std::move(picture));
    FrameBuf frame;
    if (scaled.Pixels.empty())
        return frame;
    frame.Width = frame.Height = Side;
    frame.PaletteSize = HaiPaletteBytes;
    frame.Pixels.resize(HaiPixelBytes);
    frame.Palette.resize(HaiPaletteBytes);
    Graphics().VTGF_RGBAtoIndexed8(frame.Pixels.data(), frame.Palette.data(), scaled.Pixels.data(), &Side,
                                   &Side);
    return frame;
}

FrameBuf ExpandIndexed(const FrameBuf &indexed)
{
    if (!IsIndexed(indexed))
        return {};
    ByteArray palette = indexed.Palette;
    if (palette.size() < HaiPaletteBytes)
        palette.insert(palette.end(), HaiPaletteBytes - palette.size(), 0);
    FrameBuf picture;
    picture.Width = indexed.Width;
    picture.Height = indexed.Height;
    picture.Pixels.resize(indexed.Pixels.size() * 4);
    Graphics().VTGF_AlphaSimpleBufPalAlpha_Copy_32(picture.Pixels.data(), indexed.Pixels.data(),
                                                   palette.data(), &indexed.Width, &indexed.Height);
    return picture;
}

} // namespace wb
