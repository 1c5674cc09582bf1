#include "anim/gaiwriter.h"

#include "anim/gaiformat.h"
#include "archive/zlblock.h"
#include "common/bytes.h"
#include "gi/giencoder.h"
#include "services/uitext.h"

#include <QStringList>

#include <algorithm>
#include <limits>

namespace wb
{

namespace
{

using Limits = std::numeric_limits<std::int32_t>;

constexpr std::int64_t LongestFile = Limits::max();
constexpr std::int32_t DelayHead[] = {1, 12, 14}; // what they mean is not known

std::int32_t Edge(std::int32_t start, std::int32_t size)
{
    const std::int64_t edge = std::int64_t(start) + size;
    return std::int32_t(std::clamp<std::int64_t>(edge, Limits::min(), Limits::max()));
}

void PutAt(ByteArray &file, std::int64_t position, std::initializer_list<std::int32_t> values)
{
    for (const std::int32_t value : values) {
        PutLong(file, std::int32_t(position), value);
        position += 4;
    }
}

// The header and the tables, with no data for any frame yet.
ByteArray MakeHead(const GaiBox &box, std::span<const FrameBuf> frames, bool background)
{
    const auto count = std::int32_t(frames.size());
    const bool hasDelays = count > 1;
    const auto delayTable = std::int32_t(GaiDelayTableAt(count));
    ByteArray file(std::size_t(GaiDataAt(count)), 0);
    PutAt(file, 0, {GaiMagic, GaiVersion, box.StartX, box.StartY});
    PutAt(file, 16, {Edge(box.StartX, box.Width), Edge(box.StartY, box.Height), count, background ? 1 : 0});
    if (!hasDelays)
        return file;

    PutAt(file, 32, {delayTable, count * GaiDelayRecordSize + GaiDelayHeadSize});
    PutAt(file, delayTable, {DelayHead[0], DelayHead[1], DelayHead[2]});
    PutAt(file, delayTable + 14, {count});
    for (std::int32_t i = 0; i < count; ++i)
        PutAt(file, GaiDelayRecordAt(count, i), {i, frames[std::size_t(i)].Delay});
    return file;
}

// Makes the data of frames. The memory of one is kept for the next.
class FrameCoder
{
public:
    explicit FrameCoder(const GaiWriting &writing) : m_writing(writing) {}

    // No bytes for a frame that encodes to nothing.
    ByteView Code(const FrameBuf &frame)
    {
        const bool crops = m_writing.Crop && frame.GiType != 4; // which fills the box
        const FrameBuf cropped = crops ? CropToContent(frame) : FrameBuf();
        if (EncodeGi(m_gi, crops ? cropped : frame, frame.GiType, frame.TransType, m_writing.Crop) <= 0)
            return {};
        if (!m_writing.Packed)
            return m_gi;
        ZlBlockPack(m_block, m_gi);
        return m_block.empty() ? m_gi : m_block; // rather larger than lost
    }

private:
    const GaiWriting &m_writing;
    ByteArray m_gi;
    ByteArray m_block;
};

// The lines that tell what is wrong with one frame.
QStringList ErrorsOf(const GaiBox &box, const FrameBuf &frame)
{
    const auto isOutside = [](std::int32_t start, std::int32_t size, std::int32_t at, std::int32_t length) {
        return std::int64_t(start) + size < std::int64_t(at) + length;
    };
    QStringList errors;
    if (box.StartX > frame.X)
        errors += UiText(TextGaiStartX);
    if (box.StartY > frame.Y)
        errors += UiText(TextGaiStartY);
    if (box.Width < frame.Width)
        errors += UiText(TextGaiWider);
    else if (isOutside(box.StartX, box.Width, frame.X, frame.Width))
        errors += UiText(TextGaiOutHorizontally);
    if (box.Height < frame.Height)
        errors += UiText(TextGaiTaller);
    else if (isOutside(box.StartY, box.Height, frame.Y, frame.Height))
        errors += UiText(TextGaiOutVertically);
    if (frame.GiType == 4 && box.Width != frame.Width)
        errors += UiText(TextGaiType4Width);
    if (frame.GiType == 4 && box.Height != frame.Height)
        errors += UiText(TextGaiType4Height);
    if (!GiTypeAllowed(frame.GiType, frame.TransType))
        errors += QStringLiteral(" - Тип: прозрачность GI-фрейма не позволяет записать его этим типом");
    return errors;
}

} // namespace

ByteArray WriteGai(const GaiBox &box, std::span<const FrameBuf> frames, const GaiWriting &writing,
                   const GoOn &afterFrame)
{
    if (GaiDataAt(std::int64_t(frames.size())) > LongestFile)
        return {};
    ByteArray file = MakeHead(box, frames, writing.Background);
    FrameCoder coder(writing);
    const auto count = std::int32_t(frames.size());
    for (std::int32_t i = 0; i < count; ++i) {
        const ByteView data = coder.Code(frames[std::size_t(i)]);
        if (std::int64_t(data.size()) > LongestFile - std::int64_t(file.size()))
            return {};
        if (!data.empty())
            PutAt(file, GaiFrameRecordAt(i), {ByteCount(file), ByteCount(data)});
        file.insert(file.end(), data.begin(), data.end());
        if (afterFrame && !afterFrame(i + 1, count))
            return {};
    }
    return file;
}

GaiErrors CheckGaiProject(const GaiBox &box, std::span<const FrameBuf> frames)
{
    const QString lineEnd = QStringLiteral("\r\n");
    GaiErrors found;
    for (std::size_t i = 0; i < frames.size(); ++i) {
        const QStringList errors = ErrorsOf(box, frames[i]);
        if (errors.isEmpty())
            continue;
        found.Count += std::int32_t(errors.size());
        // Each line ends, and the next entry of the log begins on a new one.
        found.Text += UiText(TextFramePrefix) + QString::number(i + 1) + lineEnd + errors.join(lineEnd) +
                      lineEnd + lineEnd;
    }
    found.Text += UiText(TextErrorCount) + QString::number(found.Count);
    return found;
}

} // namespace wb
