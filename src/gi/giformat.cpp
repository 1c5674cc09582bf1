#include "gi/giformat.h"

#include "common/bytes.h"

#include <algorithm>

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

} // namespace wb
