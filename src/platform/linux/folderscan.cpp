#include "platform/folderscan.h"

#include "platform/linux/errornumbers.h"
#include "platform/linux/handles.h"
#include "platform/nativepath.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <sys/stat.h>

namespace wb
{

namespace
{

// Names and their upper-case forms lie end to end in two buffers: one allocation a name is what makes listing
// slow.
struct Found {
    std::uint64_t Head = 0; // eight bytes of the key, the first one highest, for comparing at once
    std::size_t NameStart = 0;
    std::size_t KeyStart = 0;
    std::uint16_t NameLength = 0;
    std::uint16_t KeyLength = 0;
    EntryKind Kind = EntryKind::File;
};

class Scan
{
public:
    FileError Read(const std::string &folder);
    void Sort();
    void Fill(std::vector<FolderEntry> &entries) const;

private:
    void Add(std::string_view name, EntryKind kind);
    std::string_view NameOf(const Found &found) const
    {
        return View(m_names, found.NameStart, found.NameLength);
    }
    std::string_view KeyOf(const Found &found) const { return View(m_keys, found.KeyStart, found.KeyLength); }
    static std::string_view View(const std::string &buffer, std::size_t start, std::size_t length)
    {
        return std::string_view(buffer).substr(start, length);
    }

    std::string m_names;
    std::string m_keys;
    std::vector<Found> m_found;
};

// False when the entry is neither file nor folder. A file system that tells no kinds has to be asked for
// each.
bool KindOf(int folder, const dirent &entry, EntryKind &kind)
{
    mode_t mode = DTTOIF(entry.d_type);
    struct stat facts = {};
    if (entry.d_type == DT_UNKNOWN || entry.d_type == DT_LNK)
        mode = ::fstatat(folder, entry.d_name, &facts, 0) == 0 ? facts.st_mode : 0;
    kind = S_ISDIR(mode) ? EntryKind::Folder : EntryKind::File;
    return S_ISDIR(mode) || S_ISREG(mode);
}

FileError Scan::Read(const std::string &folder)
{
    const FolderStream stream(::opendir(folder.c_str()));
    if (stream == nullptr)
        return FileErrorOf(errno);
    const int descriptor = ::dirfd(stream.get());
    for (errno = 0;; errno = 0) {
        const dirent *entry = ::readdir(stream.get());
        if (entry == nullptr)
            return FileErrorOf(errno);
        EntryKind kind = EntryKind::File;
        if (!IsDotOrDotDot(entry->d_name) && KindOf(descriptor, *entry, kind))
            Add(entry->d_name, kind);
    }
}

void Scan::Add(std::string_view name, EntryKind kind)
{
    Found found;
    found.Kind = kind;
    found.NameStart = m_names.size();
    found.NameLength = std::uint16_t(name.size());
    m_names += name;

    found.KeyStart = m_keys.size();
    const auto isAscii = [](char byte) { return std::uint8_t(byte) < 0x80; };
    if (std::all_of(name.begin(), name.end(), isAscii)) {
        m_keys += name;
        for (std::size_t index = found.KeyStart; index < m_keys.size(); ++index)
            m_keys[index] =
                char(m_keys[index] >= 'a' && m_keys[index] <= 'z' ? m_keys[index] - 32 : m_keys[index]);
    } else {
        m_keys += FromNativeName(name).toUpper().toUtf8().toStdString();
    }
    found.KeyLength = std::uint16_t(m_keys.size() - found.KeyStart);
    m_found.push_back(found);
}

// UTF-8 bytes sort as the characters do.
void Scan::Sort()
{
    if (m_found.empty())
        return;
    // Names that a program made ("frame_00001.gi") begin alike; the heads are taken from where they part.
    std::size_t common = m_found[0].KeyLength;
    const std::string_view first = KeyOf(m_found[0]);
    for (const Found &found : m_found) {
        const std::string_view key = KeyOf(found);
        const auto parting = std::mismatch(
            key.begin(), key.begin() + std::ptrdiff_t(std::min(common, key.size())), first.begin());
        common = std::size_t(parting.first - key.begin());
    }
    for (Found &found : m_found) {
        const std::string_view key = KeyOf(found).substr(common);
        for (std::size_t index = 0; index < sizeof found.Head; ++index)
            found.Head = found.Head << 8 | (index < key.size() ? std::uint8_t(key[index]) : 0);
    }
    std::sort(m_found.begin(), m_found.end(), [this](const Found &left, const Found &right) {
        if (left.Head != right.Head)
            return left.Head < right.Head;
        const int order = KeyOf(left).compare(KeyOf(right));
        return order != 0 ? order < 0 : NameOf(left) < NameOf(right);
    });
}

void Scan::Fill(std::vector<FolderEntry> &entries) const
{
    entries.reserve(m_found.size());
    for (const Found &found : m_found)
        entries.push_back({FromNativeName(NameOf(found)), found.Kind});
}

} // namespace

FileError ScanFolder(const std::string &folder, std::vector<FolderEntry> &entries)
{
    entries.clear();
    Scan scan;
    const FileError error = scan.Read(folder);
    if (error != FileError::None)
        return error;
    scan.Sort();
    scan.Fill(entries);
    return error;
}

} // namespace wb
