// PNG pictures (ISO/IEC 15948), decoded by libpng.
#include "platform/fileio.h"
#include "rastgl/jump.h"
#include "rastgl/picture.h"
#include "rastgl/rastgl.h"

#include <limits>

#include <png.h>

namespace
{

using namespace rastgl;

// What libpng's callbacks fill. libpng is fed as a stream, because only so it hands out every row that the
// data of a file that breaks off still gives.
struct PngRead {
    std::jmp_buf jump;
    std::size_t fileBytes = 0;
    PicturePtr picture;
    bool anyRow = false;
};

[[noreturn]] void OnError(png_structp png, png_const_charp)
{
    std::longjmp(static_cast<PngRead *>(png_get_error_ptr(png))->jump, 1);
}

void OnWarning(png_structp, png_const_charp) {}

void OnHeader(png_structp png, png_infop info)
{
    constexpr std::int64_t MostBitsPerByte = 1032 * 8; // deflate packs at most 1032 bytes into one

    PngRead &read = *static_cast<PngRead *>(png_get_progressive_ptr(png));
    const std::int64_t width = png_get_image_width(png, info);
    const std::int64_t height = png_get_image_height(png, info);
    const int pixelBits = png_get_bit_depth(png, info) * png_get_channels(png, info);
    const bool hasAlpha = (png_get_color_type(png, info) & PNG_COLOR_MASK_ALPHA) != 0 ||
                          png_get_valid(png, info, PNG_INFO_tRNS) != 0;
    if (IsPlausible(width, height, read.fileBytes, MostBitsPerByte / pixelBits))
        read.picture = NewPicture(width, height, hasAlpha ? 32 : 24);
    if (!read.picture)
        png_error(png, "no room");

    png_set_expand(png);
    png_set_scale_16(png);
    png_set_gray_to_rgb(png);
    png_set_bgr(png);
    png_set_add_alpha(png, 255, PNG_FILLER_AFTER);
    png_set_interlace_handling(png);
    png_read_update_info(png, info);
}

// An interlaced row is laid over the coarser ones that came before it.
void OnRow(png_structp png, png_bytep row, png_uint_32 fromTop, int)
{
    PngRead &read = *static_cast<PngRead *>(png_get_progressive_ptr(png));
    png_progressive_combine_row(png, read.picture->Row(std::int32_t(fromTop)), row);
    read.anyRow = read.anyRow || row != nullptr;
}

PicturePtr DecodePng(Bytes file)
{
    PngRead read;
    read.fileBytes = file.size();
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, &read, OnError, OnWarning);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    if (info != nullptr) {
        RunUntilJump(read.jump, [&] {
            // Texts, profiles and the like are skipped unread: they are no part of the pixels, and small ones
            // can unpack to gigabytes.
            png_set_keep_unknown_chunks(png, PNG_HANDLE_CHUNK_NEVER, nullptr, -1);
            png_set_user_limits(png, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
            png_set_progressive_read_fn(png, &read, OnHeader, OnRow, nullptr);
            png_process_data(png, info, const_cast<png_bytep>(file.data()), file.size());
        });
    }
    png_destroy_read_struct(&png, &info, nullptr);
    return read.anyRow ? std::move(read.picture) : nullptr;
}

} // namespace

int32_t VTGF_Read_PNG(const uint8_t *data, const int32_t *length)
{
    return ReadPicture(data, length, DecodePng);
}

int32_t VTGF_Read_PNG_File(const char *path)
{
    return NoThrow(0, [&] {
        wb::ByteArray file;
        wb::ReadWholeFile(path, file, std::numeric_limits<std::int32_t>::max());
        return AddPicture(DecodePng(file));
    });
}
