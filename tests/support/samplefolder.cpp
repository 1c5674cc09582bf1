#include "support/samplefolder.h"

#include "gfx/graphicslibrary.h"
#include "gfx/pixels.h"
#include "gi/giencoder.h"

#include <gtest/gtest.h>

namespace wb
{

FrameBuf MakePicture(int width, int height, const std::function<std::uint32_t(int, int)> &colour)
{
    FrameBuf picture;
    picture.Width = width;
    picture.Height = height;
    picture.Pixels.resize(std::size_t(width) * std::size_t(height) * 4);
    auto out = picture.Pixels.begin();
    for (int y = height - 1; y >= 0; --y)
        for (int x = 0; x < width; ++x) {
            const std::uint32_t pixel = colour(x, y);
            for (int shift = 0; shift < 32; shift += 8)
                *out++ = static_cast<std::uint8_t>(pixel >> shift);
        }
    return picture;
}

FrameBuf MakePicture(int width, int height, std::uint32_t colour)
{
    return MakePicture(width, height, [colour](int, int) { return colour; });
}

FrameBuf MakeSprite(int transClass)
{
    return MakePicture(37, 23, [transClass](int x, int y) {
        if (transClass != 0 && (x * y) % 5 == 3)
            return 0U;
        const bool isGraded = transClass == 2 && x % 4 == 0;
        return isGraded ? 0x82F10000U : (x + y) % 7 < 4 ? 0xFFFF0000U : 0xFF0000FFU;
    });
}

QString SampleFolder::NativeText(std::string_view name) const
{
    return QString::fromStdString(name.empty() ? Native() : Native(name));
}

void SampleFolder::AddGi(std::string_view name, const FrameBuf &picture, int type, int transClass) const
{
    ByteArray bytes;
    ASSERT_GT(EncodeGi(bytes, picture, type, transClass, false), 0);
    Put(name, {reinterpret_cast<const char *>(bytes.data()), bytes.size()});
}

void SampleFolder::AddPng(std::string_view name, const FrameBuf &picture) const
{
    const std::int32_t handle = FrameBufToDib(picture);
    EXPECT_EQ(1, Graphics().VTGF_Write_PNG_File(Native(name).c_str(), handle));
    Graphics().VTGF_DIB_Free(handle);
}

void SampleFolder::AddSprites() const
{
    for (const int transClass : {0, 1, 2})
        AddPng(std::to_string(transClass) + ".png", MakeSprite(transClass));
    Put("noise.gi", std::string(999, 'x'));
}

} // namespace wb
