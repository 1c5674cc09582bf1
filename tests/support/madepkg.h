// Archives made of names and bytes, laid out as the packer does.
#pragma once

#include "archive/pkgformat.h"
#include "archive/zlblock.h"
#include "common/bytes.h"
#include "support/tempfolder.h"

#include <algorithm>
#include <string>
#include <vector>

namespace wb
{

struct MadeFile {
    QString name;
    std::string bytes;
    bool packed = false;
};

struct MadeFolder {
    QString name;
    std::vector<MadeFile> files = {};
    std::vector<MadeFolder> folders = {};
};

inline void AppendFolder(ByteArray &archive, const MadeFolder &folder)
{
    const std::size_t start = archive.size();
    PkgEntryList list(folder.folders.size() + folder.files.size());
    archive.resize(start + PkgDirectoryBytes(list).size());
    auto entry = list.begin();
    for (const MadeFolder &inner : folder.folders) {
        *entry++ = {inner.name, {}, 0, 0, ByteCount(archive), PkgFolder};
        AppendFolder(archive, inner);
    }
    for (const MadeFile &file : folder.files) {
        const ByteView bytes = BytesOf(file.bytes);
        ByteArray data(bytes.begin(), bytes.end());
        if (file.packed)
            ZlChunkStreamPack(data, bytes);
        std::int32_t end = ByteCount(archive);
        *entry = {file.name, {}, ByteCount(bytes), 0, end, file.packed ? PkgPacked : PkgStored};
        if (!data.empty()) {
            entry->PackedSize = ByteCount(data) + 4;
            AppendLong(archive, end, ByteCount(data));
            archive.insert(archive.end(), data.begin(), data.end());
        }
        ++entry;
    }
    std::ranges::copy(PkgDirectoryBytes(list), archive.begin() + std::ptrdiff_t(start));
}

// The archive's bytes; the root's own name counts for nothing. A packed file has at least one byte.
inline std::string MakePkg(const MadeFolder &root)
{
    ByteArray archive;
    std::int32_t end = 0;
    AppendLong(archive, end, PkgHeaderSize);
    AppendFolder(archive, root);
    return TextOf(archive);
}

} // namespace wb
