#include "archive/pkgreader.h"

#include "archive/zlblock.h"
#include "common/bytes.h"
#include "platform/nativepath.h"

#include <algorithm>
#include <array>
#include <new>

namespace wb
{

namespace
{

constexpr qsizetype LongestPath = 4096; // a walk goes no deeper, however deep the folders lie

std::int64_t RecordsIn(std::int64_t bytes)
{
    return std::max<std::int64_t>(bytes, 0) / PkgRecordSize;
}

PkgEntry ReadRecord(ByteView record, const QString &folder)
{
    ByteReader reader(record);
    PkgEntry entry;
    entry.Folder = folder;
    entry.PackedSize = reader.Long();
    entry.Size = reader.Long();
    reader.Take(PkgNameSize);
    entry.Name = PkgReadName(reader.Take(PkgNameSize));
    entry.Type = reader.Long();
    reader.Take(12);
    entry.Offset = reader.Long();
    return entry;
}

// Whether a directory's header can lie there. An aborted job leaves folders at 0, in the file's own header.
bool IsDirectoryAt(const PkgArchive &archive, std::int32_t position)
{
    return position >= PkgHeaderSize && position <= archive.File.Size() - PkgDirectoryHeaderSize;
}

// The number of records that the directory at `position` states; below 0 when its header can't be read.
std::int64_t StatedRecords(const PkgArchive &archive, std::int32_t position)
{
    std::array<std::uint8_t, PkgDirectoryHeaderSize> header = {};
    return archive.File.ReadAt(position, header) < header.size() ? -1 : GetLong(header, 4);
}

PkgEntryList ReadRecords(ByteView bytes, const QString &folder)
{
    PkgEntryList list;
    list.reserve(bytes.size() / PkgRecordSize);
    for (std::size_t start = 0; start + PkgRecordSize <= bytes.size(); start += PkgRecordSize) {
        PkgEntry entry = ReadRecord(bytes.subspan(start, PkgRecordSize), folder);
        if (entry.Type >= PkgStored && entry.Type <= PkgFolder)
            list.push_back(std::move(entry));
    }
    return list;
}

bool ReadStored(const InputFile &file, ByteArray &data, const PkgEntry &entry)
{
    const std::int64_t start = std::int64_t(entry.Offset) + 4;
    const std::int64_t there = entry.Offset < 0 ? 0 : file.Size() - start;
    data.resize(std::size_t(std::clamp<std::int64_t>(there, 0, entry.Size)));
    data.resize(file.ReadAt(start, data));
    return data.size() == std::size_t(entry.Size);
}

void ReadBranch(PkgWalk &walk, PkgEntryList &tree, std::int32_t position, const QString &folder)
{
    const std::size_t first = tree.size();
    std::ranges::move(walk.Enter(position, folder), std::back_inserter(tree));
    const std::size_t end = tree.size();
    for (std::size_t i = first; i < end; ++i) {
        if (tree[i].Type != PkgFolder)
            continue;
        const QString path = tree[i].FullPath() + u'\\';
        if (walk.MayEnter(tree[i].Offset, path))
            ReadBranch(walk, tree, tree[i].Offset, path);
        else
            tree[i].Offset = 0;
    }
}

} // namespace

PkgHandle PkgOpenRead(const QString &path, FileError &error)
{
    auto archive = std::make_shared<PkgArchive>();
    error = archive->File.Open(ToNativePath(path));
    if (error != FileError::None)
        return nullptr;
    std::array<std::uint8_t, PkgHeaderSize> header = {};
    archive->File.ReadAt(0, header);
    archive->RootOffset = GetLong(header, 0);
    return archive;
}

PkgWalk::PkgWalk(const PkgArchive &archive)
    : m_archive(archive), m_recordsLeft(RecordsIn(archive.File.Size()))
{
}

bool PkgWalk::MayEnter(std::int32_t position, const QString &folder) const
{
    return IsDirectoryAt(m_archive, position) && folder.size() <= LongestPath &&
           !m_entered.contains(position);
}

PkgEntryList PkgWalk::Enter(std::int32_t position, const QString &folder)
{
    m_isWhole = false;
    if (!MayEnter(position, folder))
        return {};
    m_entered.insert(position);
    const std::int64_t start = std::int64_t(position) + PkgDirectoryHeaderSize;
    const std::int64_t stated = StatedRecords(m_archive, position);
    const std::int64_t fitting = std::min(RecordsIn(m_archive.File.Size() - start), m_recordsLeft);
    const std::int64_t count = std::clamp<std::int64_t>(stated, 0, fitting);
    m_recordsLeft -= count;
    ByteArray bytes(std::size_t(count * PkgRecordSize));
    bytes.resize(m_archive.File.ReadAt(start, bytes));
    m_isWhole = std::int64_t(bytes.size()) == stated * PkgRecordSize;
    return ReadRecords(bytes, folder);
}

PkgEntryList PkgReadTree(const PkgArchive &archive, std::int32_t position)
{
    PkgWalk walk(archive);
    PkgEntryList tree;
    ReadBranch(walk, tree, position, {});
    return tree;
}

PkgEntryList PkgListFolder(const PkgEntryList &tree, const QString &folder)
{
    QString prefix = folder == QStringLiteral("\\") ? QString() : folder;
    if (!prefix.isEmpty() && !prefix.endsWith(u'\\'))
        prefix += u'\\';
    const auto isInside = [&prefix](const PkgEntry &entry) {
        return entry.Folder.compare(prefix, Qt::CaseInsensitive) == 0;
    };
    const auto first = std::ranges::find_if(tree, isInside);
    const auto last = std::find_if_not(first, tree.end(), isInside);

    struct Keyed {
        QString key;
        const PkgEntry *entry;
    };
    std::vector<Keyed> sorted;
    sorted.reserve(std::size_t(last - first));
    for (auto entry = first; entry != last; ++entry)
        sorted.push_back({entry->Name.toUpper(), &*entry});
    std::ranges::stable_sort(sorted, [](const Keyed &left, const Keyed &right) {
        const bool isFolder = left.entry->Type == PkgFolder;
        return isFolder != (right.entry->Type == PkgFolder) ? isFolder : left.key < right.key;
    });
    PkgEntryList list;
    list.reserve(sorted.size());
    std::ranges::transform(sorted, std::back_inserter(list), [](const Keyed &keyed) { return *keyed.entry; });
    return list;
}

bool PkgReadEntryData(const PkgArchive &archive, ByteArray &data, const PkgEntry &entry)
{
    if (entry.Type == PkgFolder || (entry.Type == PkgStored && entry.Size <= 0))
        return entry.Size == 0;
    try {
        return entry.Type == PkgPacked ? ZlChunkStreamUnpack(archive.File, data, entry.Offset, entry.Size)
                                       : ReadStored(archive.File, data, entry);
    } catch (const std::bad_alloc &) {
        data.clear();
        return false;
    }
}

} // namespace wb
