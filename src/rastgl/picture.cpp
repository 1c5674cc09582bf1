#include "rastgl/picture.h"

#include "rastgl/rastgl.h"
#include "rastgl/transtype.h"

#include <cstring>
#include <limits>
#include <new>
#include <unordered_map>

namespace rastgl
{

namespace
{

constexpr std::int64_t AlwaysPlausiblePixels = 4 << 20;

struct HandleTable {
    std::unordered_map<std::int32_t, PicturePtr> pictures;
    std::int32_t last = 0;
};

HandleTable &Handles()
{
    static HandleTable table;
    return table;
}

} // namespace

bool IsPlausible(std::int64_t width, std::int64_t height, std::size_t fileBytes, std::int64_t pixelsPerByte)
{
    if (width <= 0 || height <= 0 || width > MaxPixels || height > MaxPixels / width)
        return false;
    const std::int64_t pixels = width * height;
    return pixels <= AlwaysPlausiblePixels || pixels / pixelsPerByte <= std::int64_t(fileBytes);
}

PicturePtr NewPicture(std::int64_t width, std::int64_t height, std::int32_t bitsPerPixel) noexcept
{
    if (width <= 0 || height <= 0 || width > MaxPixels || height > MaxPixels / width)
        return nullptr;
    PicturePtr picture(new (std::nothrow) Picture);
    if (!picture)
        return nullptr;
    picture->width = std::int32_t(width);
    picture->height = std::int32_t(height);
    picture->bitsPerPixel = bitsPerPixel;
    picture->pixels.reset(static_cast<std::uint8_t *>(std::calloc(picture->ByteCount(), 1)));
    if (!picture->pixels)
        return nullptr;
    if (bitsPerPixel == 24) {
        for (std::size_t alpha = 3; alpha < picture->ByteCount(); alpha += 4)
            picture->pixels[alpha] = 255;
    }
    return picture;
}

std::int32_t AddPicture(PicturePtr picture)
{
    if (!picture)
        return 0;
    HandleTable &table = Handles();
    do {
        table.last = table.last == std::numeric_limits<std::int32_t>::max() ? 1 : table.last + 1;
    } while (table.pictures.contains(table.last));
    table.pictures.emplace(table.last, std::move(picture));
    return table.last;
}

const Picture *FindPicture(std::int32_t handle)
{
    const auto found = Handles().pictures.find(handle);
    return found == Handles().pictures.end() ? nullptr : found->second.get();
}

} // namespace rastgl

using namespace rastgl;

int32_t VTGF_Read_Buf(const uint8_t *pixels, const int32_t *width, const int32_t *height,
                      const int32_t *bitsPerPixel)
{
    return NoThrow(0, [&] {
        if (pixels == nullptr || *bitsPerPixel != 32)
            return 0;
        PicturePtr picture = NewPicture(*width, *height, 32);
        if (picture)
            std::memcpy(picture->pixels.get(), pixels, picture->ByteCount());
        return AddPicture(std::move(picture));
    });
}

int32_t VTGF_DIB_GetWidth(int32_t handle)
{
    const Picture *picture = FindPicture(handle);
    return picture ? picture->width : 0;
}

int32_t VTGF_DIB_GetHeight(int32_t handle)
{
    const Picture *picture = FindPicture(handle);
    return picture ? picture->height : 0;
}

int32_t VTGF_DIB_GetBPP(int32_t handle)
{
    const Picture *picture = FindPicture(handle);
    return picture ? picture->bitsPerPixel : 0;
}

int32_t VTGF_DIB_GetTransType(int32_t handle)
{
    const Picture *picture = FindPicture(handle);
    return picture ? wb::TransTypeOf({picture->pixels.get(), picture->ByteCount()}) : 0;
}

void VTGF_DIB_CopyBuf(uint8_t *destination, const int32_t *byteCount, int32_t handle)
{
    const Picture *picture = FindPicture(handle);
    if (picture && *byteCount > 0 && std::size_t(*byteCount) == picture->ByteCount())
        std::memcpy(destination, picture->pixels.get(), picture->ByteCount());
}

void VTGF_DIB_Free(int32_t handle)
{
    Handles().pictures.erase(handle);
}
