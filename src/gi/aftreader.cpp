#include "gi/aftreader.h"

#include "common/bytes.h"
#include "gfx/graphicslibrary.h"
#include "gfx/pixels.h"
#include "rastgl/rowrle.h"

#include <algorithm>
#include <array>

namespace wb
{

namespace
{

constexpr std::int64_t HeaderSize = 32;
constexpr std::int64_t GlyphSize = 64;
constexpr std::int64_t MostGlyphs = 65'536; // beyond any font; each costs far more memory than its record

using Pixel = std::array<std::uint8_t, 4>; // B, G, R, A
constexpr Pixel Nothing{};

constexpr std::int64_t FreePixels = 2048 * 2048;
constexpr std::int64_t PixelsPerByte = 64;
constexpr std::int64_t ReadingsPerByte = 16;

struct AftHeader {
    std::int64_t GlyphCount = 0; // that are read
    std::int64_t LineHeight = 0;
    std::int64_t Margin = 0;

    std::int64_t CellHeight() const { return LineHeight + 2 * Margin + 2; }
    std::int64_t Baseline() const { return LineHeight + Margin + 1; }
};

// One of a glyph's two bitmaps, and where its first pixel lies in the cell.
struct AftBitmap {
    std::int64_t X = 0;
    std::int64_t Y = 0;
    ByteView Data; // a header of rowrle, and the rows; empty for no bitmap
};

struct AftGlyph {
    std::int64_t Width = 0;
    AftBitmap Solid;
    AftBitmap Edge;
};

AftHeader ReadHeader(ByteReader &in)
{
    AftHeader header;
    in.Seek(8);
    const std::int32_t claimed = in.Long();
    header.LineHeight = in.Long();
    header.Margin = in.Long();
    in.Seek(HeaderSize);
    if (!in.Failed())
        header.GlyphCount =
            std::clamp<std::int64_t>(claimed, 0, std::min(in.Remaining() / GlyphSize, MostGlyphs));
    return header;
}

AftBitmap ReadBitmap(ByteReader &in, ByteView file, const AftHeader &header)
{
    AftBitmap bitmap;
    bitmap.X = std::max(in.Long(), 0);
    bitmap.Y = in.Long() + header.Baseline();
    in.Take(8);
    const std::int64_t offset = in.Long();
    const std::int64_t size = in.Long();
    const auto length = static_cast<std::int64_t>(file.size());
    if (offset >= 0 && offset <= length && size >= rowrle::HeaderSize && size <= length - offset)
        bitmap.Data = file.subspan(std::size_t(offset), std::size_t(size));
    return bitmap;
}

AftGlyph ReadGlyph(ByteReader &in, ByteView file, const AftHeader &header)
{
    AftGlyph glyph;
    in.Long();
    for (int part = 0; part < 3; ++part)
        glyph.Width += in.Long();
    glyph.Solid = ReadBitmap(in, file, header);
    glyph.Edge = ReadBitmap(in, file, header);
    return glyph;
}

// Draws a bitmap's pixels into the cell; their alpha is 255, or the byte of each where they have one. Its
// rows are walked as one line of pixels that wraps at the bitmap's width: a row's end moves nothing, because
// a row's skips and runs cover it.
template <bool HasAlpha>
void DrawBitmap(FrameBuf &cell, const AftBitmap &bitmap, Pixel pixel)
{
    if (bitmap.Data.empty() || bitmap.Y < 0)
        return;
    const rowrle::LayerHeader header = rowrle::GetHeader(bitmap.Data.data());
    const std::int64_t width = header.width;
    const std::int64_t rows = std::min<std::int64_t>(header.height, cell.Height - bitmap.Y);
    const auto put = [&](std::int64_t place, std::uint8_t alpha) {
        const std::int64_t x = bitmap.X + place % width;
        const std::int64_t y = bitmap.Y + place / width;
        pixel[3] = alpha;
        if (x < cell.Width && pixel != Nothing)
            std::ranges::copy(pixel, &cell.Pixels[std::size_t(((cell.Height - 1 - y) * cell.Width + x) * 4)]);
    };

    // The file counts all bytes of the rows but those that begin a run.
    std::int64_t counted = 0;
    std::int64_t place = 0;
    const ByteView coded = bitmap.Data.subspan(rowrle::HeaderSize);
    auto at = coded.begin();
    while (at != coded.end() && place < width * rows && counted < header.rowBytes) {
        const std::uint8_t control = *at++;
        if (!rowrle::IsRun(control)) {
            ++counted;
            place += rowrle::IsSkip(control) ? control : control == rowrle::EmptyRow ? width : 0;
            continue;
        }
        std::int64_t run = std::min<std::int64_t>(rowrle::RunLength(control), width * rows - place);
        if (HasAlpha) {
            run = std::min<std::int64_t>({run, coded.end() - at, header.rowBytes - counted});
            counted += run;
        }
        for (; run > 0; --run)
            put(place++, HasAlpha ? *at++ : 255);
    }
}

// Draws glyphs until they get out of proportion to the file.
class GlyphDrawer
{
public:
    GlyphDrawer(const AftHeader &header, std::int64_t fileBytes, std::int32_t colour)
        : m_height(header.CellHeight()), m_pixelsLeft(FreePixels + fileBytes * PixelsPerByte),
          m_bytesLeft(fileBytes * ReadingsPerByte), m_colour{static_cast<std::uint8_t>(colour >> 16),
                                                             static_cast<std::uint8_t>(colour >> 8),
                                                             static_cast<std::uint8_t>(colour), 0}
    {
        m_pixelsLeft = std::min(m_pixelsLeft, MaxPicturePixels);
    }

    FrameBuf Draw(const AftGlyph &glyph)
    {
        FrameBuf cell;
        const std::int64_t bytes = PictureBytes(glyph.Width, m_height);
        if (bytes == 0 || bytes / 4 > m_pixelsLeft)
            return cell;
        m_pixelsLeft -= bytes / 4;
        cell.Width = static_cast<std::int32_t>(glyph.Width);
        cell.Height = static_cast<std::int32_t>(m_height);
        cell.Pixels.assign(std::size_t(bytes), 0);
        if (IsGranted(glyph.Solid))
            DrawBitmap<false>(cell, glyph.Solid, m_colour);
        if (IsGranted(glyph.Edge))
            DrawBitmap<true>(cell, glyph.Edge, m_colour);
        return cell;
    }

private:
    bool IsGranted(const AftBitmap &bitmap)
    {
        const auto bytes = static_cast<std::int64_t>(bitmap.Data.size());
        const bool isGranted = bytes <= m_bytesLeft;
        m_bytesLeft -= isGranted ? bytes : 0;
        return isGranted;
    }

    std::int64_t m_height;
    std::int64_t m_pixelsLeft;
    std::int64_t m_bytesLeft;
    Pixel m_colour;
};

// All glyphs side by side.
FrameBuf MakeStrip(std::span<const FrameBuf> glyphs)
{
    FrameBuf strip;
    for (const FrameBuf &glyph : glyphs) {
        strip.Width += glyph.Width;
        strip.Height = std::max(strip.Height, glyph.Height);
    }
    strip.Pixels.resize(std::size_t(PictureBytes(strip.Width, strip.Height)));
    std::int32_t x = 0;
    const std::int32_t zero = 0;
    for (const FrameBuf &glyph : glyphs) {
        Graphics().VTGF_CopyClip_32(strip.Pixels.data(), &x, &zero, &strip.Width, &strip.Height,
                                    glyph.Pixels.data(), &zero, &zero, &glyph.Width, &glyph.Height);
        x += glyph.Width;
    }
    return strip;
}

} // namespace

std::vector<FrameBuf> ReadAftFrames(ByteView buffer, std::int32_t colour)
{
    ByteReader in(buffer);
    const AftHeader header = ReadHeader(in);
    std::vector<FrameBuf> frames;
    if (header.GlyphCount == 0)
        return frames;
    GlyphDrawer drawer(header, std::int64_t(buffer.size()), colour);
    frames.resize(std::size_t(header.GlyphCount) + 1);
    const std::span glyphs = std::span(frames).subspan(1);
    for (FrameBuf &frame : glyphs)
        frame = drawer.Draw(ReadGlyph(in, buffer, header));
    frames.front() = MakeStrip(glyphs);
    return frames;
}

FrameSet OpenAftDocument(ByteView buffer, std::int32_t colour)
{
    FrameSet document;
    for (FrameBuf &frame : ReadAftFrames(buffer, colour)) {
        document.Pictures.push_back(FrameBufToDib(frame));
        frame = {};
    }
    document.Count = static_cast<std::int32_t>(document.Pictures.size());
    if (document.Count > 0)
        document.Kind = "AFT";
    return document;
}

} // namespace wb
