#include "gi/giformat.h"

#include "common/bytes.h"

#include <algorithm>
#include <limits>

namespace wb
{

namespace
{

constexpr std::int32_t MaxLayerEdge = 0xFFFFFF;

// In the order of the file, which braces keep.
GiRect ReadRect(ByteReader &reader)
{
    return {reader.Long(), reader.Long(), reader.Long(), reader.Long()};
}

PixelMasks ReadMasks(ByteReader &reader)
{
    return {reader.Long(), reader.Long(), reader.Long(), reader.Long()};
}

GiLayer ReadLayer(ByteReader &reader, ByteView gi)
{
    GiLayer layer;
    layer.DataOffset = reader.Long();
    layer.DataSize = reader.Long();
    layer.Bounds = ReadRect(reader);
    if (layer.Bounds.Left > MaxLayerEdge)
        layer.Bounds.Left = 0;
    if (layer.Bounds.Top > MaxLayerEdge)
        layer.Bounds.Top = 0;

    ByteReader data(gi);
    data.Seek(layer.DataOffset);
    if (!data.Failed())
        layer.Data = data.Take(layer.DataSize);
    return layer;
}

constexpr std::int32_t BoundsPosition = 8;      // in the header
constexpr std::int32_t LayerBoundsPosition = 8; // in a layer record

void PutSaturated(ByteArray &gi, std::int32_t position, std::int64_t value)
{
    using Limits = std::numeric_limits<std::int32_t>;
    PutLong(gi, position, std::int32_t(std::clamp<std::int64_t>(value, Limits::min(), Limits::max())));
}

} // namespace

std::int32_t GiLayerCount(std::int32_t type)
{
    constexpr std::array<std::int32_t, MaxGiType + 1> Counts = {1, 1, 3, 2, 2, 1, 1};
    return type < 0 || type > MaxGiType ? 0 : Counts[std::size_t(type)];
}

bool GiTypeAllowed(std::int32_t type, std::int32_t transClass)
{
    switch (type) {
    case 0:
        return true;
    case 1:
        return transClass == 1;
    case 2:
    case 3:
    case 4:
        return transClass >= 1;
    default:
        return false;
    }
}

std::optional<GiHeader> ReadGiHeader(ByteView buffer, std::int64_t offset)
{
    ByteReader outer(buffer);
    outer.Seek(offset);
    if (outer.Failed() || outer.Remaining() < GiHeaderSize)
        return std::nullopt;

    const ByteView gi = outer.Take(outer.Remaining());
    ByteReader reader(gi);
    if (reader.Long() != GiMagic)
        return std::nullopt;

    GiHeader header;
    header.Version = reader.Long();
    header.Bounds = ReadRect(reader);
    header.Masks = ReadMasks(reader);
    header.Type = reader.Long();
    header.LayerCount = reader.Long();

    const std::int32_t count = std::min(header.LayerCount, MaxGiLayers);
    for (std::int32_t i = 0; i < count; i++) {
        reader.Seek(GiHeaderSize + i * GiLayerRecordSize);
        if (reader.Remaining() < GiLayerRecordSize)
            break;
        header.Layers[std::size_t(i)] = ReadLayer(reader, gi);
    }
    return header;
}

void MoveGi(ByteArray &gi, std::int32_t left, std::int32_t top, std::int64_t width, std::int64_t height)
{
    const auto header = ReadGiHeader(gi, 0);
    if (!header)
        return;
    const std::int64_t dx = std::int64_t(left) - header->Bounds.Left;
    const std::int64_t dy = std::int64_t(top) - header->Bounds.Top;
    PutSaturated(gi, BoundsPosition, left);
    PutSaturated(gi, BoundsPosition + 4, top);
    PutSaturated(gi, BoundsPosition + 8, left + width);
    PutSaturated(gi, BoundsPosition + 12, top + height);

    const std::int32_t held = (ByteCount(gi) - GiHeaderSize) / GiLayerRecordSize;
    for (std::int32_t i = 0; i < std::min(header->LayerCount, held); i++)
        for (std::int32_t edge = 0; edge < 4; edge++) {
            const std::int32_t record = GiHeaderSize + i * GiLayerRecordSize;
            const std::int32_t position = record + LayerBoundsPosition + edge * 4;
            PutSaturated(gi, position, GetLong(gi, position) + (edge % 2 == 0 ? dx : dy));
        }
}

} // namespace wb
