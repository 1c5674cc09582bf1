#include "support/samplefolder.h"

#include "common/files.h"
#include "gfx/graphicslibrary.h"
#include "gfx/pixels.h"
#include "gi/giencoder.h"
#include "platform/nativepath.h"

#include <QDir>
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

SampleFolder::SampleFolder() { EXPECT_TRUE(m_folder.isValid()); }

QString SampleFolder::Native(const QString &name) const { return QDir::cleanPath(m_folder.filePath(name)); }

QString SampleFolder::Path(const QString &name) const { return FromNativePath(Native(name).toStdString()); }

void SampleFolder::AddGi(const QString &name, const FrameBuf &picture, int type, int transClass) const
{
    ByteArray bytes;
    ASSERT_GT(EncodeGi(bytes, picture, type, transClass, false), 0);
    AddBytes(name, bytes);
}

void SampleFolder::AddPng(const QString &name, const FrameBuf &picture) const
{
    const std::int32_t handle = FrameBufToDib(picture);
    EXPECT_EQ(1, Graphics().VTGF_Write_PNG_File(Native(name).toStdString().c_str(), handle));
    Graphics().VTGF_DIB_Free(handle);
}

void SampleFolder::AddBytes(const QString &name, ByteView bytes) const { EXPECT_TRUE(WriteFileBytes(Path(name), bytes)); }

void SampleFolder::AddFolder(const QString &name) const { EXPECT_TRUE(MakePath(Path(name))); }

} // namespace wb
