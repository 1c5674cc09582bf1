#include "anim/haiwriter.h"

#include "anim/haiformat.h"
#include "anim/haiframe.h"
#include "common/bytes.h"

#include <algorithm>
#include <limits>

namespace wb
{

namespace
{

constexpr std::int64_t LongestFile = std::numeric_limits<std::int32_t>::max();

void PutHeader(ByteArray &file, std::int32_t count)
{
    const std::pair<std::int32_t, std::int32_t> values[] = {
        {0, HaiMagic},       {4, HaiSide}, {8, HaiSide}, {12, HaiSide},        {16, count},
        {20, HaiFrameBytes}, {24, 1},      {28, 8},      {48, HaiPaletteBytes}};
    for (const auto &[position, value] : values)
        PutLong(file, position, value);
}

// Into zeroes.
void PutFrame(std::uint8_t *target, const FrameBuf &frame)
{
    if (!IsIndexed(frame))
        return;
    const std::int32_t width = std::min(frame.Width, HaiSide);
    const std::int32_t height = std::min(frame.Height, HaiSide);
    for (std::int64_t row = 0; row < height; ++row)
        std::copy_n(frame.Pixels.data() + row * frame.Width, width, target + row * HaiSide);
    std::copy_n(frame.Palette.data(), std::min(frame.PaletteSize, HaiPaletteBytes), target + HaiPixelBytes);
}

} // namespace

ByteArray WriteHai(std::span<const FrameBuf> frames, const GoOn &afterFrame)
{
    const std::int64_t length = HaiHeaderSize + std::int64_t(frames.size()) * HaiFrameBytes;
    if (length > LongestFile)
        return {};
    const auto count = std::int32_t(frames.size());
    ByteArray file(std::size_t(length), 0);
    PutHeader(file, count);
    for (std::int32_t i = 0; i < count; ++i) {
        PutFrame(file.data() + HaiHeaderSize + std::int64_t(i) * HaiFrameBytes, frames[std::size_t(i)]);
        if (afterFrame && !afterFrame(i + 1, count))
            return {};
    }
    return file;
}

} // namespace wb
