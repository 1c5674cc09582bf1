// JPEG pictures (ITU-T T.81 with JFIF or Adobe markers), decoded by libjpeg.
#include "rastgl/jpegerrors.h"
#include "rastgl/picture.h"
#include "rastgl/rastgl.h"

#include <algorithm>
#include <vector>

namespace
{

using namespace rastgl;

struct JpegRead {
    jpeg_decompress_struct info{};
    JpegErrors errors;
    PicturePtr picture;
    std::size_t wholeBytes = 0;     // what the scans took of the file before an error
    std::vector<std::uint8_t> inks; // one row of C, M, Y, K

    JpegRead() { info.err = &errors; }
    ~JpegRead() { jpeg_destroy_decompress(&info); }
    JpegRead(const JpegRead &) = delete;
    JpegRead &operator=(const JpegRead &) = delete;
};

bool HasInks(const jpeg_decompress_struct &info)
{
    return info.jpeg_color_space == JCS_CMYK || info.jpeg_color_space == JCS_YCCK;
}

// Reads the header and makes the picture; false when there is none to make.
bool Begin(JpegRead &read, Bytes file)
{
    // A block of 64 pixels takes at least one bit.
    constexpr std::int64_t PixelsPerByte = 64 * 8;

    jpeg_create_decompress(&read.info);
    jpeg_mem_src(&read.info, file.data(), static_cast<unsigned long>(file.size()));
    jpeg_read_header(&read.info, TRUE);
    if (!IsPlausible(read.info.image_width, read.info.image_height, file.size(), PixelsPerByte))
        return false;
    read.picture = NewPicture(read.info.image_width, read.info.image_height, 24);
    if (!read.picture)
        return false;
    read.info.out_color_space = HasInks(read.info) ? JCS_CMYK : JCS_EXT_BGRA;
    read.info.buffered_image = jpeg_has_multiple_scans(&read.info);
    return true;
}

// Adobe's programs store inks inverted, 255 for none; plain files store 255 for all.
void InksToColours(const std::uint8_t *inks, std::uint8_t *row, std::int32_t width, bool inverted)
{
    const int flip = inverted ? 0 : 255;
    for (std::int32_t x = 0; x < width; ++x, inks += 4, row += 4) {
        const int black = inks[3] ^ flip;
        for (int channel = 0; channel < 3; ++channel)
            row[2 - channel] = std::uint8_t(((inks[channel] ^ flip) * black + 127) / 255);
    }
}

// Gathers the scans of a picture that comes in several.
void ReadScans(JpegRead &read, Bytes file)
{
    // A scan of a few bytes makes the decoder walk the whole picture: the larger that is, the fewer scans are
    // read. No encoder makes more than the least of these.
    constexpr std::int64_t LeastScans = 40;
    constexpr std::int64_t MostScans = 200;
    constexpr std::int64_t WalkedPixels = 1 << 29;

    jpeg_decompress_struct &info = read.info;
    const std::int64_t pixels = std::int64_t(info.image_width) * info.image_height;
    const std::int64_t scans = std::clamp(WalkedPixels / pixels, LeastScans, MostScans);
    jpeg_start_decompress(&info);
    do {
        // The marker behind a scan is taken with it.
        const std::size_t ahead = info.src->bytes_in_buffer + (info.unread_marker != 0 ? 2 : 0);
        read.wholeBytes = file.size() - std::min(file.size(), ahead);
    } while (info.input_scan_number <= scans && jpeg_consume_input(&info) != JPEG_REACHED_EOI);
}

void ReadRows(JpegRead &read)
{
    jpeg_decompress_struct &info = read.info;
    Picture &picture = *read.picture;
    // Every scan is in one buffer by now; naming one before the last keeps the decoder from asking for more.
    if (info.buffered_image)
        jpeg_start_output(&info, std::max(info.input_scan_number - 1, 1));
    else
        jpeg_start_decompress(&info);
    while (info.output_scanline < info.output_height) {
        std::uint8_t *row = picture.Row(std::int32_t(info.output_scanline));
        JSAMPROW target = read.inks.empty() ? row : read.inks.data();
        jpeg_read_scanlines(&info, &target, 1);
        if (!read.inks.empty())
            InksToColours(read.inks.data(), row, picture.width, info.saw_Adobe_marker != FALSE);
    }
}

// The picture, decoded as far as it goes. None when an error stopped its scans: a decoder that has met one is
// good for nothing more. `wholeBytes` is then how much of the file came before.
PicturePtr Decode(Bytes file, std::size_t &wholeBytes)
{
    JpegRead read;
    bool isBegun = false;
    RunUntilJump(read.errors.jump, [&] { isBegun = Begin(read, file); });
    if (!isBegun)
        return nullptr;
    if (HasInks(read.info))
        read.inks.resize(std::size_t(read.picture->width) * 4);
    if (read.info.buffered_image && !RunUntilJump(read.errors.jump, [&] { ReadScans(read, file); })) {
        wholeBytes = read.wholeBytes;
        return nullptr;
    }
    RunUntilJump(read.errors.jump, [&] { ReadRows(read); });
    return read.info.output_scanline > 0 ? std::move(read.picture) : nullptr;
}

PicturePtr DecodeJpeg(Bytes file)
{
    std::size_t wholeBytes = 0;
    PicturePtr picture = Decode(file, wholeBytes);
    return wholeBytes > 0 ? Decode(file.first(wholeBytes), wholeBytes) : std::move(picture);
}

} // namespace

int32_t VTGF_Read_JPEG(const uint8_t *data, const int32_t *length)
{
    return ReadPicture(data, length, DecodeJpeg);
}
