#include "anim/gaiformat.h"

#include "common/bytes.h"

#include <algorithm>

namespace wb
{

namespace
{

constexpr std::int32_t MaxBoxEdge = 0xFFFFFF;

std::int32_t BoxEdge(std::int32_t stored)
{
    return stored > MaxBoxEdge ? 0 : stored;
}

} // namespace

std::optional<GaiHeader> ReadGaiHeader(ByteView file)
{
    if (std::int64_t(file.size()) < GaiHeaderSize)
        return std::nullopt;
    ByteReader reader(file);
    if (reader.Long() != GaiMagic)
        return std::nullopt;

    GaiHeader header;
    reader.Long(); // the version
    header.Box.Left = BoxEdge(reader.Long());
    header.Box.Top = BoxEdge(reader.Long());
    header.Box.Right = reader.Long();
    header.Box.Bottom = reader.Long();
    const std::int64_t listed = (std::int64_t(file.size()) - GaiHeaderSize) / GaiFrameRecordSize;
    header.FrameCount = std::int32_t(std::clamp<std::int64_t>(reader.Long(), 0, listed));
    header.Background = reader.Long();
    return header;
}

GaiFrame ReadGaiFrame(ByteView file, const GaiHeader &header, std::int32_t index)
{
    GaiFrame frame;
    ByteReader record(file);
    record.Seek(GaiFrameRecordAt(index));
    frame.Offset = record.Long();
    frame.Length = record.Long();
    if (header.FrameCount > 1) {
        ByteReader delay(file);
        delay.Seek(GaiDelayRecordAt(header.FrameCount, index) + 4);
        frame.Delay = delay.Failed() ? 0 : delay.Long();
    }
    return frame;
}

} // namespace wb
