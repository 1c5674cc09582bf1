// The pictures behind the library's handles.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

namespace rastgl
{

// Pictures above this many pixels are refused before anything is allocated.
inline constexpr std::int64_t MaxPixels = 268'435'456;

// B, G, R, A, bottom row first, pitch width * 4.
struct Picture {
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::int32_t bitsPerPixel = 32; // 24: no transparency in the source; alpha is 255 throughout
    std::unique_ptr<std::uint8_t[]> pixels;

    std::size_t ByteCount() const { return std::size_t(width) * std::size_t(height) * 4; }
    std::uint8_t *Row(std::int32_t fromTop) { return pixels.get() + RowOffset(fromTop); }
    const std::uint8_t *Row(std::int32_t fromTop) const { return pixels.get() + RowOffset(fromTop); }

private:
    std::size_t RowOffset(std::int32_t fromTop) const
    {
        return std::size_t(height - 1 - fromTop) * std::size_t(width) * 4;
    }
};

// A picture with undefined pixels; null when the size is empty, above MaxPixels, or not to be had.
std::unique_ptr<Picture> NewPicture(std::int64_t width, std::int64_t height, std::int32_t bitsPerPixel);

// Takes the picture into the table of handles; 0 for null.
std::int32_t AddPicture(std::unique_ptr<Picture> picture);

// The picture of a handle, or null.
const Picture *FindPicture(std::int32_t handle);

} // namespace rastgl
