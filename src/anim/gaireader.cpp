#include "anim/gaireader.h"

#include "anim/expandahead.h"
#include "anim/gaiformat.h"
#include "archive/zlblock.h"
#include "common/bytes.h"
#include "gfx/pixels.h"
#include "gi/gidecoder.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

namespace wb
{

namespace
{

constexpr int MostThreads = 4; // more would wait for the one that draws

bool IsPacked(ByteView file, const GaiFrame &frame)
{
    ByteReader reader(file);
    reader.Seek(frame.Offset);
    return !reader.Failed() && reader.Long() == ZlTag01;
}

std::vector<ZlBlockPlace> PackedFrames(ByteView file, const GaiHeader &header)
{
    std::vector<ZlBlockPlace> blocks;
    for (std::int32_t i = 0; i < header.FrameCount; ++i) {
        const GaiFrame frame = ReadGaiFrame(file, header, i);
        if (IsPacked(file, frame))
            blocks.push_back({frame.Offset, frame.Length});
    }
    return blocks;
}

// Draws the frames of a file, each once and in their order.
class FrameDrawer
{
public:
    FrameDrawer(ByteView file, const GaiHeader &header)
        : m_file(file), m_packed(file, PackedFrames(file, header), std::min(CoreCount(), MostThreads))
    {
    }

    void Draw(FrameBuf &canvas, const GaiFrame &frame)
    {
        std::int32_t offset = frame.Offset;
        if (!IsPacked(m_file, frame)) {
            DecodeGi(canvas, m_file, offset);
            return;
        }
        offset = 0;
        DecodeGi(canvas, m_packed.Front(), offset);
        m_packed.Pop();
    }

private:
    ByteView m_file;
    ExpandAhead m_packed;
};

void Clear(FrameBuf &canvas)
{
    std::memset(canvas.Pixels.data(), 0, canvas.Pixels.size());
}

// Gives the picture the place and size of the box, whose pixels take that many bytes, and nothing on it.
void CoverBox(FrameBuf &picture, const GiRect &box, std::int64_t bytes)
{
    picture.X = box.Left;
    picture.Y = box.Top;
    picture.Width = std::int32_t(box.Width());
    picture.Height = std::int32_t(box.Height());
    picture.Pixels.resize(std::size_t(bytes));
    Clear(picture);
}

bool ServesAsBackground(const FrameBuf &canvas, const GaiHeader &header)
{
    return header.Background != 0 && HoldsPicture(canvas) && canvas.Width >= header.Box.Width() &&
           canvas.Height >= header.Box.Height();
}

} // namespace

FrameSet OpenGaiDocument(ByteView file, FrameBuf &canvas, const AnimViewing &viewing)
{
    const std::optional<GaiHeader> header = ReadGaiHeader(file);
    const std::int64_t boxBytes = header ? PictureBytes(header->Box.Width(), header->Box.Height()) : 0;
    MemoryBudget budget(viewing.MemoryLimit);
    if (boxBytes == 0)
        return {};
    const std::int32_t count = header->FrameCount;
    if (!budget.Holds(FrameCost + boxBytes)) {
        FrameSet document;
        document.LeftOut = count;
        return document;
    }

    const bool overBackground = ServesAsBackground(canvas, *header);
    if (!overBackground)
        CoverBox(canvas, header->Box, boxBytes);
    const bool drawnAlone =
        !overBackground && (header->Background == 0 || (header->Background == 1 && !viewing.AltMethod));

    if (count == 0)
        return {};
    FrameDrawer drawer(file, *header);
    return ReadFrames("GAI", count, viewing, [&](FrameSet &document, std::int32_t i) {
        if (!budget.Take(FrameCost + std::int64_t(canvas.Pixels.size())))
            return false;
        if (drawnAlone && i > 0)
            Clear(canvas);
        drawer.Draw(canvas, ReadGaiFrame(file, *header, i));
        document.Pictures[std::size_t(i)] = FrameBufToDib(canvas);
        document.FrameTypes.push_back(canvas.GiType);
        document.InfoText = std::to_string(canvas.GiType);
        return document.Pictures[std::size_t(i)] != 0; // no memory after all
    });
}

std::int32_t ReadGaiProject(ByteView file, GaiContents &contents, const GoOn &afterFrame,
                            std::int64_t memoryLimit)
{
    const std::optional<GaiHeader> header = ReadGaiHeader(file);
    if (!header)
        return 0;

    const auto sizeOf = [](std::int64_t distance) {
        constexpr std::int64_t largest = std::numeric_limits<std::int32_t>::max();
        return std::int32_t(std::clamp<std::int64_t>(distance, 0, largest));
    };
    GaiContents read;
    read.StartX = header->Box.Left;
    read.StartY = header->Box.Top;
    read.Width = sizeOf(header->Box.Width());
    read.Height = sizeOf(header->Box.Height());
    read.Background = header->Background;

    const std::int64_t boxBytes = PictureBytes(read.Width, read.Height);
    MemoryBudget budget(memoryLimit);
    FrameDrawer drawer(file, *header);
    for (std::int32_t i = 0; boxBytes != 0 && i < header->FrameCount; ++i) {
        if (!budget.Take(FrameCost + boxBytes)) {
            read.LeftOut = header->FrameCount - i;
            break;
        }
        const GaiFrame frame = ReadGaiFrame(file, *header, i);
        FrameBuf &picture = read.Frames.emplace_back();
        picture.Delay = frame.Delay;
        CoverBox(picture, header->Box, boxBytes);
        drawer.Draw(picture, frame);
        if (afterFrame && !afterFrame(i + 1, header->FrameCount))
            break;
    }
    contents = std::move(read);
    return std::int32_t(contents.Frames.size());
}

} // namespace wb
