// BMP pictures (Microsoft's Windows bitmaps with their headers up to version 5, and OS/2's with versions 1
// and 2).
#include "rastgl/cursor.h"
#include "rastgl/maskedpixels.h"
#include "rastgl/picture.h"
#include "rastgl/rastgl.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace
{

using namespace rastgl;

enum class Compression : std::uint32_t { None = 0, Rle8 = 1, Rle4 = 2, BitFields = 3, AlphaBitFields = 6 };

// The sizes of headers, which tell their versions apart.
constexpr std::uint32_t Os2Version1 = 12;
constexpr std::uint32_t Os2Version2 = 64;
constexpr std::uint32_t WithColourMasks = 52;
constexpr std::uint32_t WithAlphaMask = 56;

using Palette = std::array<std::array<std::uint8_t, 4>, 256>; // B, G, R, A

struct Header {
    std::uint32_t size = 0;
    std::int64_t width = 0;
    std::int64_t height = 0;
    bool isTopDown = false;
    int bits = 0; // a pixel
    Compression compression = Compression::None;
    ChannelMasks masks;
    std::size_t paletteCount = 0;
};

ChannelMasks ReadMasks(Cursor &cursor, bool withAlpha)
{
    ChannelMasks masks;
    masks.red = cursor.Little32();
    masks.green = cursor.Little32();
    masks.blue = cursor.Little32();
    masks.alpha = withAlpha ? cursor.Little32() : 0;
    return masks;
}

// The masks of a file, inside or behind its header, or those that the format implies. Only bit fields have
// alpha: the fourth byte of plain 32-bit pixels is unused, and many writers leave 0 there.
ChannelMasks FindMasks(const Header &header, Cursor &inside, Cursor &behind)
{
    if (header.compression == Compression::BitFields || header.compression == Compression::AlphaBitFields) {
        if (header.size >= WithColourMasks)
            return ReadMasks(inside, header.size >= WithAlphaMask);
        return ReadMasks(behind, header.compression == Compression::AlphaBitFields);
    }
    if (header.bits == 16)
        return {0x7C00, 0x03E0, 0x001F, 0};
    return {0xFF0000, 0x00FF00, 0x0000FF, 0};
}

// Fields that a short header lacks are 0.
Header ReadHeader(Cursor &cursor)
{
    Header header;
    header.size = cursor.Little32();
    Cursor fields(cursor.Take(std::max<std::uint32_t>(header.size, 4) - 4));
    std::uint32_t paletteCount = 0;
    if (header.size == Os2Version1) {
        header.width = fields.Little16();
        header.height = fields.Little16();
        fields.Skip(2); // planes
        header.bits = fields.Little16();
    } else {
        header.width = std::int32_t(fields.Little32());
        const std::int64_t height = std::int32_t(fields.Little32());
        header.height = std::abs(height);
        header.isTopDown = height < 0;
        fields.Skip(2); // planes
        header.bits = fields.Little16();
        header.compression = Compression(fields.Little32());
        fields.Skip(3 * 4); // bytes of pixels, resolution
        paletteCount = fields.Little32();
        fields.Skip(4); // colours that matter
    }
    header.masks = FindMasks(header, fields, cursor);
    if (header.bits <= 8)
        header.paletteCount = paletteCount != 0 ? std::min(paletteCount, 256U) : 1U << header.bits;
    return header;
}

bool IsReadable(const Header &header)
{
    const bool isIndexed = header.bits == 1 || header.bits == 2 || header.bits == 4 || header.bits == 8;
    const bool isOs2Version2 = header.size == Os2Version2 || (header.size > Os2Version1 && header.size < 40);
    switch (header.compression) {
    case Compression::None:
        return isIndexed || header.bits == 16 || header.bits == 24 || header.bits == 32;
    case Compression::Rle8:
        return header.bits == 8;
    case Compression::Rle4:
        return header.bits == 4;
    case Compression::BitFields:
        return !isOs2Version2 && (header.bits == 16 || header.bits == 32); // OS/2 means fax coding by it
    case Compression::AlphaBitFields:
        return header.bits == 16 || header.bits == 32;
    }
    return false;
}

// Entries that the file lacks are black.
Palette ReadPalette(const Header &header, Bytes entries)
{
    const std::size_t entrySize = header.size == Os2Version1 ? 3 : 4;
    Palette palette;
    palette.fill({0, 0, 0, 255});
    for (std::size_t index = 0; index < header.paletteCount && entries.size() >= (index + 1) * entrySize;
         ++index)
        std::copy_n(entries.begin() + std::ptrdiff_t(index * entrySize), 3, palette[index].begin());
    return palette;
}

// Row `y` in the order of the file.
std::uint8_t *FileRow(Picture &picture, const Header &header, std::int64_t y)
{
    return picture.Row(std::int32_t(header.isTopDown ? y : header.height - 1 - y));
}

void DecodePlain(Picture &picture, const Header &header, const Palette &palette, Cursor &data)
{
    const std::size_t rowBytes = (std::size_t(header.width) * std::size_t(header.bits) + 31) / 32 * 4;
    const MaskedPixels pixels(std::size_t(std::max(header.bits / 8, 1)), header.masks);
    for (std::int64_t y = 0; y < header.height && data.Remaining() > 0; ++y) {
        const Bytes row = data.TakeUpTo(rowBytes);
        std::uint8_t *target = FileRow(picture, header, y);
        if (header.bits > 8) {
            pixels.SpreadRow(row, picture.width, target);
            continue;
        }
        const std::size_t bits = std::size_t(header.bits);
        const std::size_t count = std::min(std::size_t(header.width), row.size() * 8 / bits);
        for (std::size_t x = 0; x < count; ++x) {
            const unsigned shift = unsigned(8 - bits - x * bits % 8);
            const unsigned index = (row[x * bits / 8] >> shift) & ((1U << bits) - 1);
            std::memcpy(target + x * 4, palette[index].data(), 4);
        }
    }
}

// Lays the indexes of a run or a literal stretch into one row, as far as the row reaches.
class RunTarget
{
public:
    RunTarget(Picture &picture, const Header &header, const Palette &palette)
        : m_picture(picture), m_header(header), m_palette(palette)
    {
    }

    bool AtEnd() const { return m_y >= m_header.height; }

    void NextRow()
    {
        m_x = 0;
        ++m_y;
    }

    void Move(std::uint8_t right, std::uint8_t onward)
    {
        m_x += right;
        m_y += onward;
    }

    // `indexes` are bytes of one or two indexes each, used over and over until `count` pixels are laid.
    void Lay(int count, Bytes indexes)
    {
        const bool isPacked = m_header.compression == Compression::Rle4;
        const std::size_t period = indexes.size() * (isPacked ? 2 : 1);
        std::uint8_t *row = FileRow(m_picture, m_header, m_y);
        for (std::size_t at = 0; at < std::size_t(count) && period > 0 && m_x < m_header.width; ++at, ++m_x) {
            const std::size_t step = at % period;
            const unsigned index =
                !isPacked ? indexes[step] : (indexes[step / 2] >> (step % 2 == 0 ? 4 : 0)) & 0x0F;
            std::memcpy(row + m_x * 4, m_palette[index].data(), 4);
        }
    }

private:
    Picture &m_picture;
    const Header &m_header;
    const Palette &m_palette;
    std::int64_t m_x = 0;
    std::int64_t m_y = 0;
};

void DecodeRuns(Picture &picture, const Header &header, const Palette &palette, Cursor &data)
{
    // What a zero count is followed by; higher values are literal pixels.
    constexpr int EndOfRow = 0;
    constexpr int EndOfPicture = 1;
    constexpr int MoveOn = 2;

    // Pixels that no run covers have index 0.
    for (std::size_t at = 0; at < picture.ByteCount(); at += 4)
        std::memcpy(&picture.pixels[at], palette[0].data(), 4);
    RunTarget target(picture, header, palette);
    while (data.Remaining() >= 2 && !target.AtEnd()) {
        const int count = data.Byte();
        if (count > 0) {
            target.Lay(count, data.Take(1));
            continue;
        }
        const int code = data.Byte();
        if (code == EndOfRow) {
            target.NextRow();
        } else if (code == EndOfPicture) {
            return;
        } else if (code == MoveOn) {
            const std::uint8_t right = data.Byte();
            target.Move(right, data.Byte());
        } else {
            // Filled up to an even number of bytes.
            const int bytes = header.compression == Compression::Rle4 ? (code + 1) / 2 : code;
            const Bytes indexes = data.TakeUpTo(std::size_t(bytes));
            target.Lay(std::min(code, int(indexes.size()) * (bytes == code ? 1 : 2)), indexes);
            data.TakeUpTo(std::size_t(bytes % 2));
        }
    }
}

PicturePtr DecodeBmp(Bytes file)
{
    Cursor cursor(file);
    const bool isBmp = cursor.Little16() == ('B' | 'M' << 8);
    cursor.Skip(8);
    const std::size_t dataOffset = cursor.Little32();
    const Header header = ReadHeader(cursor);
    if (!isBmp || cursor.Failed() || !IsReadable(header))
        return nullptr;
    const std::size_t paletteOffset = file.size() - cursor.Remaining();
    if (dataOffset < paletteOffset || dataOffset >= file.size())
        return nullptr;
    const Palette palette = ReadPalette(header, file.subspan(paletteOffset, dataOffset - paletteOffset));

    const bool isRuns = header.compression == Compression::Rle8 || header.compression == Compression::Rle4;
    const std::int64_t pixelsPerByte = isRuns ? 128 : 8; // a run puts 255 pixels into two bytes
    if (!IsPlausible(header.width, header.height, file.size(), pixelsPerByte))
        return nullptr;
    PicturePtr picture = NewPicture(header.width, header.height, header.masks.alpha != 0 ? 32 : 24);
    if (!picture)
        return nullptr;
    Cursor data(file.subspan(dataOffset));
    if (isRuns)
        DecodeRuns(*picture, header, palette, data);
    else
        DecodePlain(*picture, header, palette, data);
    return picture;
}

} // namespace

int32_t VTGF_Read_BMP(const uint8_t *data, const int32_t *length)
{
    return ReadPicture(data, length, DecodeBmp);
}
