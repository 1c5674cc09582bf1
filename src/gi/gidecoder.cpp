#include "gi/gidecoder.h"

#include "gfx/graphicslibrary.h"
#include "gfx/pixels.h"
#include "gi/giclip.h"
#include "gi/giformat.h"
#include "rastgl/rowrle.h"

#include <algorithm>
#include <cstring>

namespace wb
{

namespace
{

using DrawLayer = decltype(GraphicsLibrary::VTGR_TransBuf_DrawRGBA_16);

constexpr std::int64_t FreeCanvasPixels = 4096 * 4096;
constexpr std::int64_t CanvasPixelsPerByte = 4096;

bool IsFresh(const FrameBuf &picture)
{
    return picture.Width == 0 || picture.Height == 0;
}

// Gives a fresh picture the size of the rectangle; `clear` makes its pixels zero. False when there is nothing
// to draw on then.
bool Prepare(FrameBuf &picture, const GiRect &bounds, std::int64_t inputBytes, bool clear)
{
    if (!IsFresh(picture))
        return HoldsPicture(picture);

    const std::int64_t bytes = PictureBytes(bounds.Width(), bounds.Height());
    if (bytes == 0 || bytes / 4 > FreeCanvasPixels + inputBytes * CanvasPixelsPerByte)
        return false;
    picture.Pixels.resize(std::size_t(bytes));
    if (clear)
        std::memset(picture.Pixels.data(), 0, picture.Pixels.size());
    picture.Width = static_cast<std::int32_t>(bounds.Width());
    picture.Height = static_cast<std::int32_t>(bounds.Height());
    return true;
}

bool PrepareInPlace(FrameBuf &picture, const GiRect &bounds, std::int64_t inputBytes, bool clear = true)
{
    if (IsFresh(picture)) {
        picture.X = bounds.Left;
        picture.Y = bounds.Top;
    }
    return Prepare(picture, bounds, inputBytes, clear);
}

// Where a layer's first pixel lies on the picture, and the layer's size.
struct Placed {
    std::int64_t X = 0;
    std::int64_t Y = 0;
    std::int64_t Width = 0;
    std::int64_t Height = 0;

    bool Meets(const FrameBuf &picture) const
    {
        return Width > 0 && Height > 0 && X < picture.Width && Y < picture.Height && X + Width > 0 &&
               Y + Height > 0;
    }
    bool LiesInside(const FrameBuf &picture) const
    {
        return X >= 0 && Y >= 0 && X + Width <= picture.Width && Y + Height <= picture.Height;
    }
    bool Covers(const FrameBuf &picture) const
    {
        return X == 0 && Y == 0 && Width == picture.Width && Height == picture.Height;
    }
};

// Cuts the place of a plane, rows top row first, down to the rows that are there as a whole. False when none
// of them lies on the picture.
bool FitPlane(Placed &place, const FrameBuf &picture, ByteView plane, int bytesPerPixel)
{
    if (place.Width <= 0)
        return false;
    place.Height = std::min(place.Height, std::int64_t(plane.size()) / (place.Width * bytesPerPixel));
    return PictureBytes(place.Width, place.Height) != 0 && place.Meets(picture);
}

using CopyRows = decltype(GraphicsLibrary::VTGF_CopyClip_32);

void PlaceRows(FrameBuf &picture, const Placed &place, const std::uint8_t *rows, CopyRows copy)
{
    const auto x = static_cast<std::int32_t>(place.X);
    const auto y = static_cast<std::int32_t>(place.Y);
    const auto width = static_cast<std::int32_t>(place.Width);
    const auto height = static_cast<std::int32_t>(place.Height);
    const std::int32_t start = 0;
    copy(picture.Pixels.data(), &x, &y, &picture.Width, &picture.Height, rows, &start, &start, &width,
         &height);
}

// Draws a plane that expand(pixels, width, height) makes pixels of.
template <typename Expand>
void DrawExpanded(FrameBuf &picture, const Placed &place, Expand expand)
{
    const auto width = static_cast<std::int32_t>(place.Width);
    const auto height = static_cast<std::int32_t>(place.Height);
    if (place.Covers(picture)) {
        expand(picture.Pixels.data(), &width, &height);
        return;
    }
    ByteArray pixels;
    pixels.resize(std::size_t(PictureBytes(width, height)));
    expand(pixels.data(), &width, &height);
    PlaceRows(picture, place, pixels.data(), Graphics().VTGF_CopyClip_32);
}

// Type 0. A 5-6-5 plane has the size that the header says, a 32-bit plane that of its layer.
void DecodePlain(FrameBuf &picture, const GiHeader &header, std::int64_t inputBytes)
{
    const GiLayer &layer = header.Layers[0];
    const bool is565 = header.Masks == Masks565;
    const bool isKnown = is565 || header.Masks == Masks8888;
    const int bytesPerPixel = is565 ? 2 : 4;
    const GiRect &size = is565 ? header.Bounds : layer.Bounds;

    // Clearing what the plane overwrites anyway would cost as much as drawing it.
    const std::int64_t planeBytes = PictureBytes(size.Width(), size.Height()) / 4 * bytesPerPixel;
    const bool covers = isKnown && std::int64_t(layer.Data.size()) >= planeBytes &&
                        layer.Bounds.Left == header.Bounds.Left && layer.Bounds.Top == header.Bounds.Top &&
                        size.Width() == header.Bounds.Width() && size.Height() == header.Bounds.Height();
    if (!PrepareInPlace(picture, header.Bounds, inputBytes, !covers) || !isKnown)
        return;

    Placed place = {std::int64_t(layer.Bounds.Left) - picture.X, std::int64_t(layer.Bounds.Top) - picture.Y,
                    size.Width(), size.Height()};
    if (place.X < 0 || place.Y < 0 || !FitPlane(place, picture, layer.Data, bytesPerPixel))
        return;
    if (!is565) {
        PlaceRows(picture, place, layer.Data.data(), Graphics().VTGF_CopyClip_Flip_32);
        return;
    }
    DrawExpanded(picture, place,
                 [&layer](std::uint8_t *pixels, const std::int32_t *width, const std::int32_t *height) {
                     Graphics().VTGF_Convert565toRGBA(pixels, layer.Data.data(), width, height);
                 });
}

// Draws a run-coded layer whose rows follow a palette of that many bytes.
template <int PixelBytes>
void DrawRunCoded(FrameBuf &picture, const GiLayer &layer, int paletteBytes, DrawLayer draw)
{
    const std::int64_t held = std::int64_t(layer.Data.size()) - rowrle::HeaderSize - paletteBytes;
    if (held < 0)
        return;
    const rowrle::LayerHeader header = rowrle::GetHeader(layer.Data.data());
    Placed place = {std::int64_t(layer.Bounds.Left) - picture.X, std::int64_t(layer.Bounds.Top) - picture.Y,
                    header.width, header.height};
    if (!place.Meets(picture))
        return;

    ByteArray clipped;
    ByteView data = layer.Data;
    if (!place.LiesInside(picture) || header.rowBytes > held) {
        LayerPart part;
        part.Left = std::max<std::int64_t>(-place.X, 0);
        part.Top = std::max<std::int64_t>(-place.Y, 0);
        part.Width = std::min(place.Width, picture.Width - place.X) - part.Left;
        part.Height = std::min(place.Height, picture.Height - place.Y) - part.Top;
        clipped = ClipLayer<PixelBytes>(data, std::size_t(paletteBytes), part);
        data = clipped;
        place.X += part.Left;
        place.Y += part.Top;
    }

    // Drawn from its top row upwards in memory, so that the picture need not be turned before and after.
    const std::int64_t pitch = std::int64_t(picture.Width) * 4;
    std::uint8_t *const first = picture.Pixels.data() + (picture.Height - 1 - place.Y) * pitch + place.X * 4;
    draw(first, static_cast<std::int32_t>(-pitch), data.data());
}

// Types 1 to 3: the partly transparent pixels first, alpha before colour, the opaque ones last.
void DecodeRunCoded(FrameBuf &picture, const GiHeader &header, std::int64_t inputBytes)
{
    const bool wasFresh = IsFresh(picture);
    if (!PrepareInPlace(picture, header.Bounds, inputBytes))
        return;
    const GraphicsLibrary &graphics = Graphics();
    const auto &layers = header.Layers;
    if (header.Type == 3) {
        // A look at pixels that were cleared a moment ago would take as long as drawing them.
        DrawRunCoded<1>(picture, layers[1], rowrle::AlphaPaletteSize,
                        wasFresh ? graphics.VTGR_AlphaIndexed_AlphaCopyRGBA_16
                                 : graphics.VTGR_AlphaIndexed_AlphaDrawRGBA_16);
        DrawRunCoded<1>(picture, layers[0], rowrle::OpaquePaletteSize,
                        graphics.VTGR_AlphaIndexed_DrawRGBA_16);
        return;
    }
    if (header.Type == 2) {
        DrawRunCoded<1>(picture, layers[2], 0, graphics.VTGR_AlphaBuf_Draw_RGBA);
        DrawRunCoded<2>(picture, layers[1], 0, graphics.VTGR_TransAlphaBuf_DrawRGBA_16);
    }
    DrawRunCoded<2>(picture, layers[0], 0, graphics.VTGR_TransBuf_DrawRGBA_16);
}

// Type 4.
void DecodeIndexed(FrameBuf &picture, const GiHeader &header, std::int64_t inputBytes)
{
    const GiLayer &layer = header.Layers[0];
    const ByteView palette = header.Layers[1].Data;
    if (palette.size() < std::size_t(GiPaletteSize))
        return;

    const std::int64_t width = layer.Bounds.Width();
    const std::int64_t height = layer.Bounds.Height();
    const bool complete = std::int64_t(layer.Data.size()) >= PictureBytes(width, height) / 4;
    if (!Prepare(picture, layer.Bounds, inputBytes, !complete))
        return;

    Placed place = {0, 0, width, height};
    if (!place.Covers(picture)) {
        place.X = std::int64_t(layer.Bounds.Left) - picture.X;
        place.Y = std::int64_t(layer.Bounds.Top) - picture.Y;
    }
    if (!FitPlane(place, picture, layer.Data, 1))
        return;
    DrawExpanded(picture, place, [&](std::uint8_t *pixels, const std::int32_t *w, const std::int32_t *h) {
        Graphics().VTGF_AlphaSimpleBufPalAlpha_Copy_32(pixels, layer.Data.data(), palette.data(), w, h);
    });
}

} // namespace

void DecodeGi(FrameBuf &picture, ByteView buffer, std::int32_t &offset)
{
    const std::optional<GiHeader> header = ReadGiHeader(buffer, offset);
    if (!header)
        return;

    picture.Kind = "GI";
    picture.GiType = header->Type;
    if (IsFresh(picture)) {
        picture.Width = picture.Height = 0;
        picture.Pixels.clear();
    }
    const std::int64_t inputBytes = std::int64_t(buffer.size()) - offset;
    switch (header->Type) {
    case 0:
        DecodePlain(picture, *header, inputBytes);
        break;
    case 1:
    case 2:
    case 3:
        DecodeRunCoded(picture, *header, inputBytes);
        break;
    case 4:
        DecodeIndexed(picture, *header, inputBytes);
        break;
    case 5:
        PrepareInPlace(picture, header->Layers[0].Bounds, inputBytes);
        break;
    case 6:
        PrepareInPlace(picture, header->Bounds, inputBytes);
        break;
    default:
        break;
    }
}

} // namespace wb
