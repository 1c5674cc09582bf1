// Writing of JPEG files through libjpeg.
#include "platform/fileio.h"
#include "rastgl/jpegerrors.h"
#include "rastgl/picture.h"
#include "rastgl/rastgl.h"

#include <algorithm>
#include <vector>

namespace
{

using namespace rastgl;

struct JpegWrite {
    jpeg_compress_struct info{};
    JpegErrors errors;
    unsigned char *file = nullptr;
    unsigned long fileBytes = 0;

    JpegWrite()
    {
        info.err = &errors;
        jpeg_create_compress(&info);
    }
    ~JpegWrite()
    {
        jpeg_destroy_compress(&info);
        std::free(file);
    }
    JpegWrite(const JpegWrite &) = delete;
    JpegWrite &operator=(const JpegWrite &) = delete;
};

void OverBlack(const std::uint8_t *pixels, std::vector<std::uint8_t> &row)
{
    for (std::size_t at = 0; at < row.size(); at += 4) {
        for (std::size_t channel = 0; channel < 3; ++channel)
            row[at + channel] = std::uint8_t((pixels[at + channel] * pixels[at + 3] + 127) / 255);
    }
}

void Encode(JpegWrite &write, const Picture &picture, int quality, std::vector<std::uint8_t> &row)
{
    // From here on the user asks for more than chroma of half the resolution can give.
    constexpr int FullChromaQuality = 90;

    jpeg_compress_struct &info = write.info;
    jpeg_mem_dest(&info, &write.file, &write.fileBytes);
    info.image_width = JDIMENSION(picture.width);
    info.image_height = JDIMENSION(picture.height);
    info.input_components = 4;
    info.in_color_space = JCS_EXT_BGRX;
    jpeg_set_defaults(&info);
    jpeg_set_quality(&info, quality, TRUE);
    info.optimize_coding = TRUE;
    if (quality >= FullChromaQuality)
        info.comp_info[0].h_samp_factor = info.comp_info[0].v_samp_factor = 1;
    jpeg_start_compress(&info, TRUE);
    for (std::int32_t y = 0; y < picture.height; ++y) {
        OverBlack(picture.Row(y), row);
        JSAMPROW source = row.data();
        jpeg_write_scanlines(&info, &source, 1);
    }
    jpeg_finish_compress(&info);
}

} // namespace

int32_t VTGF_Write_JPEG_File(const char *path, int32_t handle, const int32_t *quality)
{
    return NoThrow(0, [&] {
        const Picture *picture = FindPicture(handle);
        if (picture == nullptr)
            return 0;
        JpegWrite write;
        std::vector<std::uint8_t> row(std::size_t(picture->width) * 4);
        const bool encoded = RunUntilJump(
            write.errors.jump, [&] { Encode(write, *picture, std::clamp(*quality, 0, 100), row); });
        const Bytes file(write.file, write.fileBytes);
        const bool isWritten =
            encoded && wb::WriteWholeFile(path, file, {.IsFlushed = false}) == wb::FileError::None;
        return isWritten ? 1 : 0;
    });
}
