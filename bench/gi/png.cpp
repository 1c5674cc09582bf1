#include "png.h"

#include <cstring>
#include <png.h>

namespace wb::bench
{

namespace
{

struct Source {
    const std::vector<std::uint8_t> *file;
    std::size_t position;
};

void Append(png_structp png, png_bytep data, png_size_t count)
{
    auto *file = static_cast<std::vector<std::uint8_t> *>(png_get_io_ptr(png));
    file->insert(file->end(), data, data + count);
}

void Take(png_structp png, png_bytep data, png_size_t count)
{
    auto *source = static_cast<Source *>(png_get_io_ptr(png));
    if (count > source->file->size() - source->position)
        png_error(png, "no more bytes");
    std::memcpy(data, source->file->data() + source->position, count);
    source->position += count;
}

} // namespace

void EncodePng(std::vector<std::uint8_t> &file, const std::uint8_t *pixels, int width, int height,
               PngSetting setting)
{
    file.clear();
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_set_write_fn(png, &file, Append, nullptr);
    if (setting == PngSetting::Fastest) {
        png_set_compression_level(png, 1);
        png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_FILTER_SUB);
    }
    png_set_IHDR(png, info, png_uint_32(width), png_uint_32(height), 8, PNG_COLOR_TYPE_RGB_ALPHA,
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    png_set_bgr(png);
    for (int y = height - 1; y >= 0; y--)
        png_write_row(png, pixels + std::size_t(y) * std::size_t(width) * 4);
    png_write_end(png, info);
    png_destroy_write_struct(&png, &info);
}

void DecodePng(std::uint8_t *pixels, const std::vector<std::uint8_t> &file)
{
    Source source{&file, 0};
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_set_read_fn(png, &source, Take);
    png_read_info(png, info);
    png_set_bgr(png);
    const std::size_t pitch = png_get_rowbytes(png, info);
    for (std::size_t y = png_get_image_height(png, info); y > 0; y--)
        png_read_row(png, pixels + (y - 1) * pitch, nullptr);
    png_destroy_read_struct(&png, &info, nullptr);
}

} // namespace wb::bench
