// An animation as the viewer opens it, over a background and without.
#include "fuzz/support/gaiparts.h"
#include "fuzz/support/target.h"

#include "anim/gaireader.h"
#include "gfx/pixels.h"

namespace wb
{

namespace
{

// The file stands behind a byte that says how it is opened.
constexpr std::size_t KindSize = 1;
constexpr unsigned OverBackground = 1;
constexpr unsigned AltMethod = 2;

FrameBuf Background()
{
    FrameBuf canvas;
    canvas.Width = canvas.Height = 64;
    canvas.Pixels.assign(std::size_t(PictureBytes(canvas.Width, canvas.Height)), 0x80);
    return canvas;
}

} // namespace

std::vector<FilePart> TakeApart(ByteView file, bool expands)
{
    if (file.empty())
        return {};
    std::vector<FilePart> parts = GaiParts(file.subspan(KindSize), expands);
    if (!parts.empty())
        parts.insert(parts.begin(), {ByteArray(file.begin(), file.begin() + KindSize)});
    return parts;
}

ByteArray PutTogether(const std::vector<FilePart> &parts)
{
    if (parts.empty())
        return {};
    ByteArray file = parts.front().bytes;
    AppendBytes(file, GaiOf({parts.begin() + 1, parts.end()}));
    return file;
}

void FuzzOne(ByteView bytes)
{
    if (bytes.empty())
        return;
    const unsigned kind = bytes.front();
    FrameBuf canvas = (kind & OverBackground) != 0 ? Background() : FrameBuf();
    const FrameSet document =
        OpenGaiDocument(bytes.subspan(KindSize), canvas,
                        {.AltMethod = (kind & AltMethod) != 0, .MemoryLimit = std::int64_t(64) << 20});
    Require(document.Count >= 0 && std::size_t(document.Count) <= document.Pictures.size(),
            "every frame has a picture");
}

} // namespace wb
