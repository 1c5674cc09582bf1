// PSD pictures (Adobe Photoshop File Formats Specification): the merged picture, not the layers.
#include "rastgl/cursor.h"
#include "rastgl/picture.h"
#include "rastgl/rastgl.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace
{

using namespace rastgl;

enum class Mode : std::uint16_t { Bitmap = 0, Grey = 1, Indexed = 2, Rgb = 3, Cmyk = 4, Duotone = 8 };

// What stands before the pixels.
struct Header {
    int channels = 0;
    std::int64_t width = 0;
    std::int64_t height = 0;
    int depth = 0; // bits a channel
    Mode mode = Mode::Bitmap;
    Bytes palette;               // 256 reds, 256 greens, 256 blues
    std::int16_t layerCount = 0; // below 0: the first extra channel is the merged picture's transparency
    bool isPacked = false;
};

constexpr std::uint32_t Tag(const char (&text)[5])
{
    return std::uint32_t(text[0]) << 24 | std::uint32_t(text[1]) << 16 | std::uint32_t(text[2]) << 8 |
           std::uint32_t(text[3]);
}

// 0 for modes that are not read. Duotones are stored as their grey.
int ColourChannels(Mode mode)
{
    switch (mode) {
    case Mode::Bitmap:
    case Mode::Grey:
    case Mode::Indexed:
    case Mode::Duotone:
        return 1;
    case Mode::Rgb:
        return 3;
    case Mode::Cmyk:
        return 4;
    }
    return 0;
}

bool IsReadable(const Header &header)
{
    const bool isDepthKnown =
        header.mode == Mode::Bitmap ? header.depth == 1 : header.depth == 8 || header.depth == 16;
    const bool isPaletteThere =
        header.mode != Mode::Indexed || (header.palette.size() >= 768 && header.depth == 8);
    const int colours = ColourChannels(header.mode);
    return colours > 0 && header.channels >= colours && isDepthKnown && isPaletteThere;
}

// Files of 16 bits keep their layers in a tagged block behind the empty place of the 8-bit ones.
std::int16_t ReadLayerCount(Bytes layerSection)
{
    Cursor cursor(layerSection);
    if (cursor.Big32() > 0)
        return std::int16_t(cursor.Big16());
    cursor.Skip(cursor.Big32()); // global layer mask
    while (cursor.Remaining() > 0) {
        const std::uint32_t signature = cursor.Big32();
        const std::uint32_t key = cursor.Big32();
        const std::uint32_t length = cursor.Big32();
        if (signature != Tag("8BIM") && signature != Tag("8B64"))
            break;
        if (key == Tag("Lr16"))
            return std::int16_t(cursor.Big16());
        cursor.Skip((std::size_t(length) + 3) & ~std::size_t(3));
    }
    return 0;
}

// Leaves the cursor at the merged picture's data; a header without channels when there is none to read.
Header ReadHeader(Cursor &cursor)
{
    constexpr std::uint16_t Raw = 0;
    constexpr std::uint16_t PackBits = 1;

    Header header;
    const bool isPsd = cursor.Big32() == Tag("8BPS") && cursor.Big16() == 1;
    cursor.Skip(6);
    header.channels = cursor.Big16();
    header.height = cursor.Big32();
    header.width = cursor.Big32();
    header.depth = cursor.Big16();
    header.mode = Mode(cursor.Big16());
    header.palette = cursor.Take(cursor.Big32());
    cursor.Skip(cursor.Big32()); // resources: resolution, thumbnails, print settings
    header.layerCount = ReadLayerCount(cursor.Take(cursor.Big32()));
    const std::uint16_t compression = cursor.Big16();
    header.isPacked = compression == PackBits;
    if (!isPsd || cursor.Remaining() == 0 || (compression != Raw && compression != PackBits))
        return {};
    return header;
}

// Undoes PackBits (a count of literals to copy, or one byte to repeat) as far as packed data and row reach;
// gives the bytes unpacked.
std::size_t UnpackRow(Bytes packed, std::vector<std::uint8_t> &row)
{
    std::size_t done = 0;
    while (!packed.empty() && done < row.size()) {
        const int control = packed[0] < 128 ? packed[0] : packed[0] - 256;
        packed = packed.subspan(1);
        const std::size_t room = row.size() - done;
        if (control >= 0) {
            const std::size_t count = std::min({std::size_t(control) + 1, room, packed.size()});
            std::copy_n(packed.begin(), count, row.begin() + std::ptrdiff_t(done));
            packed = packed.subspan(count);
            done += count;
        } else if (control != -128 && !packed.empty()) {
            const std::size_t count = std::min(std::size_t(1 - control), room);
            std::fill_n(row.begin() + std::ptrdiff_t(done), count, packed[0]);
            packed = packed.subspan(1);
            done += count;
        }
    }
    return done;
}

// A single extra channel of a picture without layers is its alpha in the eyes of common viewers; among
// several none is told apart from saved selections.
bool HasAlpha(const Header &header)
{
    const int extra = header.channels - ColourChannels(header.mode);
    return header.layerCount < 0 ? extra > 0 : header.layerCount == 0 && extra == 1;
}

// Hands out the rows of the picture, channel after channel.
class RowSource
{
public:
    RowSource(const Header &header, Cursor &cursor)
        : m_cursor(cursor), m_isPacked(header.isPacked),
          m_row((std::size_t(header.width) * std::size_t(header.depth) + 7) / 8)
    {
        if (m_isPacked)
            m_lengths =
                Cursor(cursor.TakeUpTo(std::size_t(header.channels) * std::size_t(header.height) * 2));
    }

    // The next row, as much of it as is there.
    Bytes Next()
    {
        if (!m_isPacked)
            return m_cursor.TakeUpTo(m_row.size());
        const Bytes packed = m_cursor.TakeUpTo(m_lengths.Big16());
        return Bytes(m_row).first(UnpackRow(packed, m_row));
    }

    bool AtEnd() const { return m_cursor.Remaining() == 0; }

private:
    Cursor &m_cursor;
    bool m_isPacked;
    Cursor m_lengths{Bytes()};
    std::vector<std::uint8_t> m_row;
};

// Brings a row of big-endian 16-bit or single-bit samples to bytes; bits count from the highest, 1 is black.
void ToByteSamples(Bytes row, int depth, std::size_t width, std::vector<std::uint8_t> &samples)
{
    samples.resize(std::min(width, row.size() * 8 / std::size_t(depth)));
    for (std::size_t x = 0; x < samples.size(); ++x) {
        if (depth == 8)
            samples[x] = row[x];
        else if (depth == 1)
            samples[x] = (row[x / 8] >> (7 - x % 8)) & 1 ? 0 : 255;
        else
            samples[x] = std::uint8_t(((row[2 * x] << 8 | row[2 * x + 1]) + 128) / 257);
    }
}

// Lays one row of one channel into the picture. Inks are stored inverted, 255 for none, so that the black of
// CMYK, which comes last, scales the colours.
void LayChannel(const Header &header, int channel, const std::vector<std::uint8_t> &samples,
                std::uint8_t *target)
{
    const bool isAlpha = channel == ColourChannels(header.mode);
    for (const std::uint8_t sample : samples) {
        if (isAlpha) {
            target[3] = sample;
        } else if (header.mode == Mode::Indexed) {
            for (std::size_t colour = 0; colour < 3; ++colour)
                target[2 - colour] = header.palette[colour * 256 + sample];
        } else if (ColourChannels(header.mode) == 1) {
            std::fill_n(target, 3, sample);
        } else if (channel < 3) {
            target[2 - channel] = sample;
        } else {
            for (int colour = 0; colour < 3; ++colour)
                target[colour] = std::uint8_t((target[colour] * sample + 127) / 255);
        }
        target += 4;
    }
}

// The merged picture is stored blended over white where it is transparent; this takes the white out again.
void RemoveWhite(Picture &picture)
{
    for (std::size_t at = 0; at < picture.ByteCount(); at += 4) {
        std::uint8_t *pixel = &picture.pixels[at];
        const int alpha = pixel[3];
        for (int channel = 0; channel < 3; ++channel) {
            const int colour = std::max(pixel[channel] - (255 - alpha), 0);
            pixel[channel] = alpha == 0 ? 0 : std::uint8_t((colour * 255 + alpha / 2) / alpha);
        }
    }
}

PicturePtr DecodePsd(Bytes file)
{
    Cursor cursor(file);
    const Header header = ReadHeader(cursor);
    // PackBits makes up to 128 bytes of two.
    if (!IsReadable(header) || !IsPlausible(header.width, header.height, file.size(), 64 * 8 / header.depth))
        return nullptr;
    // Starts out opaque, so that colours whose alpha is broken off still show.
    PicturePtr picture = NewPicture(header.width, header.height, 24);
    if (!picture)
        return nullptr;

    const bool hasAlpha = HasAlpha(header);
    if (hasAlpha)
        picture->bitsPerPixel = 32;

    RowSource rows(header, cursor);
    std::vector<std::uint8_t> samples;
    for (int channel = 0; channel < ColourChannels(header.mode) + (hasAlpha ? 1 : 0); ++channel) {
        for (std::int32_t y = 0; y < picture->height && !rows.AtEnd(); ++y) {
            ToByteSamples(rows.Next(), header.depth, std::size_t(header.width), samples);
            LayChannel(header, channel, samples, picture->Row(y));
        }
    }
    if (hasAlpha && header.layerCount < 0)
        RemoveWhite(*picture);
    return picture;
}

} // namespace

int32_t VTGF_Read_PSD(const uint8_t *data, const int32_t *length)
{
    return ReadPicture(data, length, DecodePsd);
}
