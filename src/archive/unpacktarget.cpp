#include "archive/unpacktarget.h"

#include "common/files.h"
#include "platform/fileio.h"
#include "platform/folderscan.h"
#include "platform/nativepath.h"

namespace wb
{

std::optional<UnpackTarget> UnpackTarget::Make(const QString &path)
{
    if (!MakePath(path))
        return std::nullopt;
    return MakeNative(path, ToNativePath(path));
}

std::optional<UnpackTarget> UnpackTarget::MakeFolder(const QString &name) const
{
    return MakeNative(m_path + u'\\' + name, NativeOf(name));
}

std::optional<UnpackTarget> UnpackTarget::MakeNative(const QString &path, const std::string &native)
{
    UnpackTarget target;
    target.m_path = path;
    target.m_native = native;
    target.m_isNew = !GetFileFacts(native).Exists;
    if (wb::MakeFolder(native) != FileError::None)
        return std::nullopt;
    if (target.m_isNew)
        return target;
    std::vector<FolderEntry> entries;
    ScanFolder(native, entries);
    for (const FolderEntry &entry : entries)
        target.m_older.insert(entry.Name.toUpper(), entry.Name);
    return target;
}

// An older name that differs only in its case is the same; looking that up on the disk would list the folder
// for every file.
std::string UnpackTarget::NativeOf(const QString &name) const
{
    const QString text = FromNativeName(name.toStdString());
    std::string exact = NativeChild(m_native, text);
    if (m_older.isEmpty() || GetFileFacts(exact).Exists)
        return exact;
    return NativeChild(m_native, m_older.value(text.toUpper(), text));
}

bool UnpackTarget::IsLinkThere(const QString &name) const
{
    return !m_isNew && IsLink(NativeOf(name));
}

bool UnpackTarget::WriteFile(const QString &name, ByteView bytes) const
{
    // What is replaced comes from the archive; waiting for the disk after each file would take far longer
    // than unpacking.
    return WriteWholeFile(NativeOf(name), bytes, {.IsFlushed = false}) == FileError::None;
}

} // namespace wb
