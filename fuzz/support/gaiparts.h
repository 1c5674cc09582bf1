// The GAI (anim/gaiformat.h) as a file that is taken apart: what stands in front of the frames, then each
// frame.
#pragma once

#include "fuzz/support/inner.h"

#include "anim/gaiformat.h"
#include "archive/zlblock.h"
#include "common/bytes.h"

#include <algorithm>

namespace wb
{

inline std::vector<FilePart> GaiParts(ByteView file, bool expands)
{
    constexpr std::int32_t MostFrames = 100;
    constexpr std::int32_t MostExpanded = 1 << 16;

    const std::optional<GaiHeader> header = ReadGaiHeader(file);
    if (!header || header->FrameCount > MostFrames)
        return {};
    const auto part = [&](std::int64_t offset, std::int64_t length) {
        ByteReader reader(file);
        reader.Seek(offset);
        const ByteView bytes = reader.Take(std::clamp<std::int64_t>(length, 0, reader.Remaining()));
        return FilePart{ByteArray(bytes.begin(), bytes.end())};
    };
    std::vector<FilePart> parts = {part(0, GaiDataAt(header->FrameCount))};
    for (std::int32_t i = 0; i < header->FrameCount; ++i) {
        const GaiFrame frame = ReadGaiFrame(file, *header, i);
        FilePart data = part(frame.Offset, frame.Length);
        ByteReader block(data.bytes);
        ByteArray plain;
        if (expands && block.Long() == ZlTag01 && block.Long() <= MostExpanded &&
            ZlBlockUnpack(plain, data.bytes, -1, 0))
            data = {std::move(plain), true};
        parts.push_back(std::move(data));
    }
    return parts;
}

inline ByteArray GaiOf(const std::vector<FilePart> &parts)
{
    ByteArray file;
    std::int64_t frame = -1;
    for (const FilePart &part : parts) {
        ByteArray data = part.bytes;
        if (part.isPacked)
            ZlBlockPack(data, part.bytes);
        const std::int64_t record = GaiFrameRecordAt(frame++);
        if (record >= GaiHeaderSize && record + GaiFrameRecordSize <= std::int64_t(file.size())) {
            PutLong(file, std::int32_t(record), ByteCount(file));
            PutLong(file, std::int32_t(record) + 4, ByteCount(data));
        }
        AppendBytes(file, data);
    }
    return file;
}

} // namespace wb
