// A folder of made pictures that a test can open.
#pragma once

#include "gfx/framebuf.h"

#include <QString>
#include <QTemporaryDir>

#include <functional>

namespace wb
{

// A picture whose pixel at (x, y), counted from the top-left, is `colour(x, y)` as 0xAARRGGBB.
FrameBuf MakePicture(int width, int height, const std::function<std::uint32_t(int, int)> &colour);
FrameBuf MakePicture(int width, int height, std::uint32_t colour);

class SampleFolder
{
public:
    SampleFolder();

    QString Native(const QString &name = {}) const;
    QString Path(const QString &name = {}) const; // path of the program

    void AddGi(const QString &name, const FrameBuf &picture, int type, int transClass) const;
    void AddPng(const QString &name, const FrameBuf &picture) const;
    void AddBytes(const QString &name, ByteView bytes) const;
    void AddFolder(const QString &name) const;

private:
    QTemporaryDir m_folder;
};

} // namespace wb
