// DDS pictures (Microsoft's DirectDraw Surface file layout): the top mip level of plain and DXT surfaces.
#include "rastgl/cursor.h"
#include "rastgl/maskedpixels.h"
#include "rastgl/picture.h"
#include "rastgl/rastgl.h"

#include <squish.h>

#include <algorithm>
#include <array>

namespace
{

using namespace rastgl;

constexpr std::uint32_t FourCc(const char (&text)[5])
{
    return std::uint32_t(text[0]) | std::uint32_t(text[1]) << 8 | std::uint32_t(text[2]) << 16 |
           std::uint32_t(text[3]) << 24;
}

// The fields of the header that count, with DDS_PIXELFORMAT at its end.
struct Header {
    std::int64_t width = 0;
    std::int64_t height = 0;
    std::uint32_t formatFlags = 0;
    std::uint32_t fourCc = 0;
    std::uint32_t bitCount = 0;
    ChannelMasks masks; // luminance in red
};

constexpr std::uint32_t HasAlphaMask = 0x1;
constexpr std::uint32_t HasFourCc = 0x4;
constexpr std::uint32_t HasColourMasks = 0x40;
constexpr std::uint32_t HasLuminance = 0x20000;

// Leaves the cursor at the first byte of the top mip level.
Header ReadHeader(Cursor &cursor)
{
    constexpr std::size_t HeaderSize = 124;
    constexpr std::size_t UpToPixelFormat = 15 * 4; // pitch, depth, mip count, reserved words, its size
    Header header;
    if (cursor.Little32() != FourCc("DDS ") || cursor.Little32() != HeaderSize)
        return {};
    cursor.Little32(); // which fields are set; too many writers get it wrong
    header.height = cursor.Little32();
    header.width = cursor.Little32();
    cursor.Skip(UpToPixelFormat);
    header.formatFlags = cursor.Little32();
    header.fourCc = cursor.Little32();
    header.bitCount = cursor.Little32();
    header.masks.red = cursor.Little32();
    header.masks.green = cursor.Little32();
    header.masks.blue = cursor.Little32();
    header.masks.alpha = cursor.Little32();
    cursor.Skip(5 * 4); // capabilities
    return header;
}

PicturePtr DecodePlain(const Header &header, Cursor &cursor, std::size_t fileBytes)
{
    const std::size_t pixelBytes = header.bitCount / 8;
    if (header.bitCount % 8 != 0 || pixelBytes < 1 || pixelBytes > 4)
        return nullptr;
    if (!IsPlausible(header.width, header.height, fileBytes, 1))
        return nullptr;
    ChannelMasks masks = header.masks;
    if ((header.formatFlags & HasLuminance) != 0)
        masks.green = masks.blue = masks.red;
    if ((header.formatFlags & HasAlphaMask) == 0)
        masks.alpha = 0;
    const MaskedPixels pixels(pixelBytes, masks);
    PicturePtr picture = NewPicture(header.width, header.height, pixels.HasAlpha() ? 32 : 24);
    for (std::int32_t y = 0; picture && y < picture->height; ++y) {
        const Bytes row = cursor.TakeUpTo(std::size_t(picture->width) * pixelBytes);
        pixels.SpreadRow(row, picture->width, picture->Row(y));
    }
    return picture;
}

// Copies the part of a decoded 4 x 4 block that lies inside the picture; tells whether all of it is opaque.
bool PlaceBlock(Picture &picture, std::int32_t left, std::int32_t top, const std::uint8_t *rgba)
{
    bool isOpaque = true;
    for (std::int32_t y = top; y < std::min(top + 4, picture.height); ++y) {
        std::uint8_t *target = picture.Row(y) + std::size_t(left) * 4;
        const std::uint8_t *source = rgba + (y - top) * 16;
        for (std::int32_t x = left; x < std::min(left + 4, picture.width); ++x, source += 4, target += 4) {
            target[0] = source[2];
            target[1] = source[1];
            target[2] = source[0];
            target[3] = source[3];
            isOpaque = isOpaque && source[3] == 255;
        }
    }
    return isOpaque;
}

PicturePtr DecodeBlocks(const Header &header, Cursor &cursor, std::size_t fileBytes, int kind)
{
    if (!IsPlausible(header.width, header.height, fileBytes, 2))
        return nullptr;
    // DXT1 can cut holes but rarely does; the picture counts as having alpha when it really has some.
    const bool mayBeOpaque = kind == squish::kDxt1;
    const std::size_t blockBytes = kind == squish::kDxt1 ? 8 : 16;
    PicturePtr picture = NewPicture(header.width, header.height, mayBeOpaque ? 24 : 32);
    if (!picture)
        return nullptr;
    for (std::int32_t top = 0; top < picture->height; top += 4) {
        for (std::int32_t left = 0; left < picture->width; left += 4) {
            const Bytes block = cursor.Take(blockBytes);
            if (cursor.Failed())
                return picture;
            std::array<std::uint8_t, 64> rgba{};
            squish::Decompress(rgba.data(), block.data(), kind);
            if (!PlaceBlock(*picture, left, top, rgba.data()))
                picture->bitsPerPixel = 32;
        }
    }
    return picture;
}

PicturePtr DecodeDds(Bytes file)
{
    Cursor cursor(file);
    const Header header = ReadHeader(cursor);
    if (cursor.Failed() || cursor.Remaining() == 0)
        return nullptr;
    if ((header.formatFlags & HasFourCc) == 0) {
        const bool hasMasks = (header.formatFlags & (HasColourMasks | HasLuminance)) != 0;
        return hasMasks ? DecodePlain(header, cursor, file.size()) : nullptr;
    }
    switch (header.fourCc) {
    case FourCc("DXT1"):
        return DecodeBlocks(header, cursor, file.size(), squish::kDxt1);
    case FourCc("DXT3"):
        return DecodeBlocks(header, cursor, file.size(), squish::kDxt3);
    case FourCc("DXT5"):
        return DecodeBlocks(header, cursor, file.size(), squish::kDxt5);
    default:
        return nullptr;
    }
}

} // namespace

int32_t VTGF_Read_DDS(const uint8_t *data, const int32_t *length)
{
    return ReadPicture(data, length, DecodeDds);
}
