// A folder of made pictures that a test can open.
#pragma once

#include "gfx/framebuf.h"
#include "support/tempfolder.h"

#include <functional>

namespace wb
{

// A picture whose pixel at (x, y), counted from the top-left, is `colour(x, y)` as 0xAARRGGBB.
FrameBuf MakePicture(int width, int height, const std::function<std::uint32_t(int, int)> &colour);
FrameBuf MakePicture(int width, int height, std::uint32_t colour);

// A picture of that transparency class which every GI type that allows the class holds to the bit.
FrameBuf MakeSprite(int transClass);

class SampleFolder : public TempFolder
{
public:
    QString NativeText(std::string_view name = {}) const;

    void AddGi(std::string_view name, const FrameBuf &picture, int type, int transClass) const;
    void AddPng(std::string_view name, const FrameBuf &picture) const;

    // 0.png, 1.png and 2.png are the sprites of these classes; noise.gi is nothing.
    void AddSprites() const;
};

} // namespace wb
