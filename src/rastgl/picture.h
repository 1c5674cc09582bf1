// The pictures behind the library's handles, and what every reader of a file format shares.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <span>

namespace rastgl
{

using Bytes = std::span<const std::uint8_t>;

// Pictures above this many pixels are refused before anything is allocated.
inline constexpr std::int64_t MaxPixels = 268'435'456;

struct FreeMemory {
    void operator()(void *memory) const { std::free(memory); }
};

// B, G, R, A, bottom row first, pitch width * 4.
struct Picture {
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::int32_t bitsPerPixel = 32; // 24: no transparency in the source; alpha is 255 throughout
    std::unique_ptr<std::uint8_t[], FreeMemory> pixels;

    std::size_t ByteCount() const { return std::size_t(width) * std::size_t(height) * 4; }
    std::uint8_t *Row(std::int32_t fromTop) { return pixels.get() + RowOffset(fromTop); }
    const std::uint8_t *Row(std::int32_t fromTop) const { return pixels.get() + RowOffset(fromTop); }

private:
    std::size_t RowOffset(std::int32_t fromTop) const
    {
        return std::size_t(height - 1 - fromTop) * std::size_t(width) * 4;
    }
};

using PicturePtr = std::unique_ptr<Picture>;

// Whether a file of so many bytes may claim a picture of this size: its format packs at most `pixelsPerByte`
// into a byte. Up to four million pixels are granted to any file, so that one that breaks off still shows its
// rows.
bool IsPlausible(std::int64_t width, std::int64_t height, std::size_t fileBytes, std::int64_t pixelsPerByte);

// A picture with nothing on it: 32 bits fully transparent, 24 bits black. Null when the size is empty, above
// MaxPixels, or not to be had.
PicturePtr NewPicture(std::int64_t width, std::int64_t height, std::int32_t bitsPerPixel) noexcept;

// Takes the picture into the table of handles; 0 for null. A freed handle does not come back before all
// others have been used.
std::int32_t AddPicture(PicturePtr picture);

// The picture of a handle, or null.
const Picture *FindPicture(std::int32_t handle);

// Runs the body of a C function: `failed` when it throws, so that nothing is thrown at the caller.
template <typename Result, typename Body>
Result NoThrow(Result failed, Body &&body) noexcept
{
    try {
        return body();
    } catch (...) {
        return failed;
    }
}

// The body of every VTGF_Read function: decodes the data into a new handle, 0 when there is nothing to
// decode.
template <typename Decoder>
std::int32_t ReadPicture(const std::uint8_t *data, const std::int32_t *length, Decoder &&decode) noexcept
{
    return NoThrow(0, [&] {
        if (data == nullptr || length == nullptr || *length <= 0)
            return 0;
        return AddPicture(decode(Bytes(data, std::size_t(*length))));
    });
}

} // namespace rastgl
