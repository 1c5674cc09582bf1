#include "common/files.h"

#include "platform/fileio.h"
#include "platform/nativepath.h"

#include <limits>

namespace wb
{

std::int32_t ReadFileBytes(const QString &path, ByteArray &bytes)
{
    ReadWholeFile(ToNativePath(path), bytes, std::numeric_limits<std::int32_t>::max());
    return std::int32_t(bytes.size());
}

bool WriteFileBytes(const QString &path, ByteView bytes)
{
    return WriteWholeFile(ToNativePath(path), bytes) == FileError::None;
}

bool DeleteFile(const QString &path)
{
    RemoveFile(ToNativePath(path));
    return !FileExists(path);
}

bool FileExists(const QString &path)
{
    // "*" and "?" have no native path.
    const FileFacts facts = GetFileFacts(ToNativePath(path));
    return facts.Exists && !facts.IsFolder;
}

bool FolderExists(const QString &path)
{
    return GetFileFacts(ToNativePath(path)).IsFolder;
}

bool MakePath(const QString &path)
{
    for (qsizetype end = -1; end < path.size();) {
        end = path.indexOf(u'\\', end + 1);
        end = end < 0 ? path.size() : end;
        const QString level = path.first(end);
        if (level.isEmpty() || level.endsWith(u':'))
            continue;
        const std::string native = ToNativePath(level);
        if (!GetFileFacts(native).IsFolder && MakeFolder(native) != FileError::None)
            return false;
    }
    return true;
}

} // namespace wb
