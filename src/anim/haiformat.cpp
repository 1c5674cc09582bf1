#include "anim/haiformat.h"

#include "common/bytes.h"

#include <algorithm>

namespace wb
{

std::optional<HaiHeader> ReadHaiHeader(ByteView file)
{
    if (std::int64_t(file.size()) < HaiHeaderSize)
        return std::nullopt;
    HaiHeader header;
    header.Width = GetLong(file, 4);
    header.Height = GetLong(file, 8);
    header.FrameCount =
        std::int32_t(std::clamp<std::int64_t>(GetLong(file, 16), 0, std::int64_t(file.size())));
    header.FrameStep = GetLong(file, 20);
    header.PaletteBytes = GetLong(file, 48);
    return header;
}

} // namespace wb
