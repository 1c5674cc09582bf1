#include "anim/haireader.h"

#include "anim/haiformat.h"
#include "anim/haiframe.h"
#include "gfx/pixels.h"

#include <algorithm>

namespace wb
{

namespace
{

constexpr std::int64_t SmallFilesLimit = 64 << 20;
constexpr std::int64_t BytesPerFileByte = 16;

MemoryBudget BudgetFor(ByteView file, std::int64_t limit)
{
    MemoryBudget budget(limit);
    budget.LimitTo(SmallFilesLimit + BytesPerFileByte * std::int64_t(file.size()));
    return budget;
}

bool IsInside(ByteView file, std::int64_t position)
{
    return position >= 0 && position < std::int64_t(file.size());
}

// `count` bytes of the file from `position` on, which is not negative; zeroes for what it has not.
ByteArray BytesAt(ByteView file, std::int64_t position, std::int64_t count)
{
    const std::int64_t held = std::clamp<std::int64_t>(std::int64_t(file.size()) - position, 0, count);
    ByteArray bytes(file.begin() + (held == 0 ? 0 : position),
                    file.begin() + (held == 0 ? 0 : position + held));
    bytes.insert(bytes.end(), std::size_t(count - held), 0);
    return bytes;
}

FrameBuf ReadFrame(ByteView file, const HaiHeader &header, std::int64_t position, std::int32_t paletteBytes)
{
    const std::int64_t pixels = std::int64_t(header.Width) * header.Height;
    FrameBuf frame;
    frame.Width = header.Width;
    frame.Height = header.Height;
    frame.Pixels = BytesAt(file, position, pixels);
    frame.Palette = BytesAt(file, position + pixels, paletteBytes);
    frame.PaletteSize = paletteBytes;
    return frame;
}

} // namespace

FrameSet OpenHaiDocument(ByteView file, const AnimViewing &viewing)
{
    const HaiHeader header = ReadHaiHeader(file).value_or(HaiHeader());
    const std::int32_t paletteBytes = std::min(header.PaletteBytes, HaiPaletteBytes); // what is looked at
    const std::int64_t pictureBytes = paletteBytes > 0 ? PictureBytes(header.Width, header.Height) : 0;
    MemoryBudget budget = BudgetFor(file, viewing.MemoryLimit);
    return ReadFrames("HAI", header.FrameCount, viewing, [&](FrameSet &document, std::int32_t frame) {
        const std::int64_t position = HaiFrameAt(header, frame);
        const bool isThere = pictureBytes != 0 && IsInside(file, position);
        if (!budget.Take(FrameCost + (isThere ? pictureBytes : 0)))
            return false;
        if (!isThere)
            return true;
        std::int32_t &picture = document.Pictures[std::size_t(frame)];
        picture = FrameBufToDib(ExpandIndexed(ReadFrame(file, header, position, paletteBytes)));
        return picture != 0;
    });
}

std::int32_t ReadHaiProject(ByteView file, std::vector<FrameBuf> &frames, const GoOn &afterFrame,
                            std::int64_t memoryLimit)
{
    const HaiHeader header = ReadHaiHeader(file).value_or(HaiHeader());
    const std::int64_t pixels = PictureBytes(header.Width, header.Height) / 4;
    if (header.FrameCount == 0 || pixels == 0 || header.FrameStep < 1 || header.PaletteBytes < 1)
        return 0;
    MemoryBudget budget = BudgetFor(file, memoryLimit);
    frames.clear();
    for (std::int32_t i = 0; i < header.FrameCount; ++i) {
        if (!budget.Take(FrameCost + pixels + header.PaletteBytes))
            break;
        frames.push_back(ReadFrame(file, header, HaiFrameAt(header, i), header.PaletteBytes));
        if (afterFrame && !afterFrame(i + 1, header.FrameCount))
            break;
    }
    return header.FrameCount;
}

} // namespace wb
