#include "archive/openarchive.h"

#include "common/paths.h"

#include <algorithm>

namespace wb
{

bool OpenArchive::Open(const QString &path)
{
    Close();
    m_handle = PkgOpenRead(path, m_error);
    if (m_handle == nullptr)
        return false;
    m_path = NormalizePath(path);
    m_tree = PkgReadTree(*m_handle, m_handle->RootOffset);
    ShowFolder({});
    return true;
}

void OpenArchive::Close()
{
    *this = OpenArchive();
}

QString OpenArchive::Location() const
{
    return m_folder.isEmpty() ? m_path : m_path + u'\\' + m_folder;
}

void OpenArchive::ShowFolder(const QString &folder)
{
    m_folder = folder;
    m_entries = PkgListFolder(m_tree, folder);
}

int OpenArchive::ShowParent()
{
    const QString left = m_folder;
    ShowFolder(left.left(std::max<qsizetype>(left.lastIndexOf(u'\\'), 0)));
    const auto isLeft = [&left](const PkgEntry &entry) {
        return entry.Type == PkgFolder && entry.FullPath() == left;
    };
    const auto entry = std::ranges::find_if(m_entries, isLeft);
    return entry == m_entries.end() ? -1 : int(entry - m_entries.begin()) + 1;
}

const PkgEntry *OpenArchive::EntryOfRow(int row) const
{
    return row >= 1 && std::size_t(row) <= m_entries.size() ? &m_entries[std::size_t(row) - 1] : nullptr;
}

ByteArray OpenArchive::ReadEntry(const PkgEntry &entry) const
{
    ByteArray data;
    if (m_handle != nullptr)
        PkgReadEntryData(*m_handle, data, entry);
    return data;
}

} // namespace wb
