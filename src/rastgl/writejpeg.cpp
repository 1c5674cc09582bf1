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

// The file grows in a vector: where memory ends, libjpeg's own destination in memory leaves a pointer to what
// it has freed.
struct JpegWrite {
    jpeg_compress_struct info{};
    JpegErrors errors;
    jpeg_destination_mgr destination{};
    std::vector<std::uint8_t> file;

    JpegWrite()
    {
        info.err = &errors;
        info.client_data = this;
        destination.init_destination = [](j_compress_ptr jpeg) { Of(jpeg).Grow(); };
        destination.empty_output_buffer = [](j_compress_ptr jpeg) -> boolean {
            Of(jpeg).Grow();
            return TRUE;
        };
        destination.term_destination = [](j_compress_ptr jpeg) { Of(jpeg).CutOff(); };
    }
    ~JpegWrite() { jpeg_destroy_compress(&info); }
    JpegWrite(const JpegWrite &) = delete;
    JpegWrite &operator=(const JpegWrite &) = delete;

private:
    static JpegWrite &Of(j_compress_ptr jpeg) { return *static_cast<JpegWrite *>(jpeg->client_data); }

    // Called when the file is full, as it is while it has no bytes.
    void Grow()
    {
        constexpr std::size_t LeastBytes = 1 << 16;

        const std::size_t used = file.size();
        const bool hasRoom = NoThrow(false, [&] {
            file.resize(std::max(used * 2, LeastBytes));
            return true;
        });
        if (!hasRoom)
            JpegErrors::Exit(reinterpret_cast<j_common_ptr>(&info));
        destination.next_output_byte = file.data() + used;
        destination.free_in_buffer = file.size() - used;
    }

    void CutOff() { file.resize(file.size() - destination.free_in_buffer); }
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
    jpeg_create_compress(&info);
    info.dest = &write.destination;
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
        const bool isWritten =
            encoded && wb::WriteWholeFile(path, write.file, {.IsFlushed = false}) == wb::FileError::None;
        return isWritten ? 1 : 0;
    });
}
