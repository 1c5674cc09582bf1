// Writing of PNG files (ISO/IEC 15948) through libpng.
#include "platform/fileio.h"
#include "rastgl/jump.h"
#include "rastgl/picture.h"
#include "rastgl/rastgl.h"

#include <png.h>
#include <zlib.h>

#include <algorithm>
#include <vector>

namespace
{

using namespace rastgl;

struct Compression {
    int level;
    int strategy;
};

// Over made sprites, soft glows and photos this level writes three to four times as fast as libpng's own
// choice (6) for one to six per cent more bytes; level 3 costs over ten.
constexpr Compression Searching = {.level = 4, .strategy = Z_FILTERED};

// What grainy pictures want: they hold nothing to search for, and so are as small and several times as fast.
constexpr Compression RunsOnly = {.level = 1, .strategy = Z_RLE};

// The rows to encode: bands of `bandRows` rows, one beginning at every `bandStep`-th row.
struct Bands {
    std::int32_t bandRows;
    std::int32_t bandStep;

    bool Holds(std::int32_t row) const { return row % bandStep < bandRows; }
};

constexpr Bands WholePicture = {1, 1};
constexpr Bands Sample = {8, 128};

struct PngWrite {
    std::jmp_buf jump;
    std::vector<std::uint8_t> file;
};

[[noreturn]] void OnError(png_structp png, png_const_charp)
{
    std::longjmp(static_cast<PngWrite *>(png_get_error_ptr(png))->jump, 1);
}

void OnWarning(png_structp, png_const_charp) {}

void OnBytes(png_structp png, png_bytep bytes, std::size_t count)
{
    auto &file = *static_cast<std::vector<std::uint8_t> *>(png_get_io_ptr(png));
    const bool hasRoom = NoThrow(false, [&] {
        file.insert(file.end(), bytes, bytes + count);
        return true;
    });
    if (!hasRoom)
        png_error(png, "no room");
}

void WriteRows(png_structp png, png_infop info, const Picture &picture, Bands bands, Compression compression)
{
    constexpr int MemoryLevel = 9;

    png_uint_32 rows = 0;
    for (std::int32_t y = 0; y < picture.height; ++y)
        rows += bands.Holds(y) ? 1 : 0;
    const bool hasAlpha = picture.bitsPerPixel == 32;
    png_set_user_limits(png, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
    png_set_IHDR(png, info, png_uint_32(picture.width), rows, 8,
                 hasAlpha ? PNG_COLOR_TYPE_RGBA : PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_set_compression_level(png, compression.level);
    png_set_compression_strategy(png, compression.strategy);
    png_set_compression_mem_level(png, MemoryLevel);
    // The other two filters take libpng longer to try than they save: Paeth's is a third of the whole time.
    png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_FILTER_SUB | PNG_FILTER_UP | PNG_FILTER_AVG);
    png_write_info(png, info);
    png_set_bgr(png);
    if (!hasAlpha)
        png_set_filler(png, 0, PNG_FILLER_AFTER);
    for (std::int32_t y = 0; y < picture.height; ++y) {
        if (bands.Holds(y))
            png_write_row(png, picture.Row(y));
    }
    png_write_end(png, info);
}

// Empty when it can't be encoded.
std::vector<std::uint8_t> Encode(const Picture &picture, Bands bands, Compression compression)
{
    PngWrite write;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, &write, OnError, OnWarning);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    bool complete = false;
    if (info != nullptr) {
        png_set_write_fn(png, &write.file, OnBytes, nullptr);
        complete = RunUntilJump(write.jump, [&] { WriteRows(png, info, picture, bands, compression); });
    }
    png_destroy_write_struct(&png, &info);
    return complete ? std::move(write.file) : std::vector<std::uint8_t>();
}

// Tries both on a sixteenth of the rows.
Compression BestCompression(const Picture &picture)
{
    if (picture.height < Sample.bandStep)
        return Searching;
    const std::size_t searched = Encode(picture, Sample, Searching).size();
    return Encode(picture, Sample, RunsOnly).size() <= searched ? RunsOnly : Searching;
}

} // namespace

int32_t VTGF_Write_PNG_File(const char *path, int32_t handle)
{
    return NoThrow(0, [&] {
        const Picture *picture = FindPicture(handle);
        if (picture == nullptr)
            return 0;
        const std::vector<std::uint8_t> file = Encode(*picture, WholePicture, BestCompression(*picture));
        // A picture that was exported can be exported again: there is no waiting for the disk.
        const bool isWritten =
            !file.empty() && wb::WriteWholeFile(path, file, {.IsFlushed = false}) == wb::FileError::None;
        return isWritten ? 1 : 0;
    });
}
