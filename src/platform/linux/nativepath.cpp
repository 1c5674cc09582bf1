#include "platform/nativepath.h"

#include "platform/drives.h"
#include "platform/linux/handles.h"

#include <QByteArray>
#include <QStringList>
#include <cerrno>
#include <climits>
#include <sys/stat.h>

namespace wb
{

namespace
{

bool HasDrive(QStringView path)
{
    return path.size() >= 2 && path[1] == u':';
}

std::string JoinNative(std::string folder, std::string_view name)
{
    if (!folder.ends_with('/'))
        folder += '/';
    return folder.append(name);
}

std::string CurrentFolder()
{
    char buffer[PATH_MAX];
    return ::getcwd(buffer, sizeof buffer) != nullptr ? std::string(buffer) : std::string("/");
}

// The mount point of a drive's letter, in either case; empty for none. An unknown letter may be a drive that
// came after the table was read.
std::string MountPointOf(QChar letter)
{
    const auto find = [letter](const DriveTable &drives) {
        for (const Drive &drive : drives) {
            if (letter.toUpper() == QLatin1Char(drive.Letter))
                return drive.MountPoint;
        }
        return std::string();
    };
    std::string mountPoint = find(*KnownDrives());
    return mountPoint.empty() && letter.isLetter() ? find(ListDrives()) : mountPoint;
}

// Splits `path` into native names below `base`, ".." resolved. False when one of them can't be a name.
bool SplitNames(QStringView path, std::vector<std::string> &names)
{
    qsizetype start = 0;
    for (qsizetype index = 0; index <= path.size(); ++index) {
        if (index < path.size() && path[index] != u'\\' && path[index] != u'/')
            continue;
        const QStringView name = path.sliced(start, index - start);
        start = index + 1;
        if (name.isEmpty() || name == u".")
            continue;
        if (name == u"..") {
            if (!names.empty())
                names.pop_back();
            continue;
        }
        names.push_back(ToNativeName(name));
        if (names.back().empty())
            return false;
    }
    return true;
}

bool Exists(const std::string &path)
{
    struct stat facts = {};
    return ::lstat(path.c_str(), &facts) == 0;
}

// The name in `folder` that equals `name` ignoring case, the first in byte order of several; empty for none.
std::string FindIgnoringCase(const std::string &folder, const std::string &name)
{
    const FolderStream stream(::opendir(folder.c_str()));
    const QString wanted = FromNativeName(name);
    std::string found;
    while (const dirent *entry = stream != nullptr ? ::readdir(stream.get()) : nullptr) {
        const std::string_view candidate = entry->d_name;
        if (wanted.compare(FromNativeName(candidate), Qt::CaseInsensitive) == 0 &&
            (found.empty() || candidate < found))
            found = candidate;
    }
    return found;
}

// Goes down from `base` as far as the names exist in any case; the rest stays as written.
std::string LookUp(const std::string &base, const std::vector<std::string> &names)
{
    std::string exact = base;
    for (const std::string &name : names)
        exact = JoinNative(std::move(exact), name);
    if (names.empty() || Exists(exact) || (errno != ENOENT && errno != ENOTDIR))
        return exact;

    std::string path = base;
    bool isFound = true;
    for (const std::string &name : names) {
        std::string next = JoinNative(path, name);
        if (isFound && !Exists(next)) {
            const std::string other = FindIgnoringCase(path, name);
            isFound = !other.empty();
            if (isFound)
                next = JoinNative(path, other);
        }
        path = std::move(next);
    }
    return path;
}

// The drive whose mount point leads to the absolute native path and is the longest of them.
const Drive &DriveOf(const DriveTable &drives, std::string_view native)
{
    const Drive *best = &drives.front(); // C:, which leads everywhere
    for (const Drive &drive : drives) {
        const std::string &point = drive.MountPoint;
        const bool leads =
            native.starts_with(point) && (native.size() == point.size() || native[point.size()] == '/');
        if (leads && point.size() > best->MountPoint.size())
            best = &drive;
    }
    return *best;
}

// The absolute native path with "//", "." and ".." resolved.
std::string CleanNative(std::string_view native)
{
    std::string absolute =
        native.starts_with('/') ? std::string(native) : JoinNative(CurrentFolder(), native);
    std::string clean;
    for (std::size_t start = 0; start < absolute.size();) {
        const std::size_t end = std::min(absolute.find('/', start), absolute.size());
        const std::string_view name = std::string_view(absolute).substr(start, end - start);
        if (name == "..")
            clean.resize(clean.empty() ? 0 : clean.rfind('/'));
        else if (!name.empty() && name != ".")
            clean.append("/").append(name);
        start = end + 1;
    }
    return clean.empty() ? "/" : clean;
}

} // namespace

std::string ToNativePath(const QString &path)
{
    if (path.isEmpty())
        return {};
    const bool hasDrive = HasDrive(path);
    if (!hasDrive && path[0] != u'\\' && path[0] != u'/')
        return ToNativePath(FromNativePath(".") + u'\\' + path);
    const std::string base = hasDrive ? MountPointOf(path[0]) : "/";
    std::vector<std::string> names;
    if (base.empty() || !SplitNames(QStringView(path).sliced(hasDrive ? 2 : 0), names))
        return {};
    return LookUp(base, names);
}

QString FromNativePath(std::string_view native)
{
    if (native.empty())
        return {};
    const std::string clean = CleanNative(native);
    const std::shared_ptr<const DriveTable> drives = KnownDrives();
    const Drive &drive = DriveOf(*drives, clean);
    std::string_view rest =
        std::string_view(clean).substr(drive.MountPoint.size() == 1 ? 0 : drive.MountPoint.size());

    QString path = QLatin1Char(drive.Letter) + QStringLiteral(":\\");
    for (bool isFirst = true; rest.size() > 1; isFirst = false) {
        rest.remove_prefix(1);
        const std::size_t end = std::min(rest.find('/'), rest.size());
        path += isFirst ? QString() : QStringLiteral("\\");
        path += FromNativeName(rest.substr(0, end));
        rest.remove_prefix(end);
    }
    return path;
}

QString PathFromUserText(const QString &text)
{
    constexpr QStringView fileUrl = u"file://";
    if (text.startsWith(fileUrl, Qt::CaseInsensitive)) {
        // RFC 8089: between the slashes stands the host, empty or "localhost" for this machine.
        QStringView place = QStringView(text).sliced(fileUrl.size());
        if (place.startsWith(u"localhost/", Qt::CaseInsensitive))
            place = place.sliced(9);
        if (place.startsWith(u'/'))
            return FromNativePath(QByteArray::fromPercentEncoding(place.toUtf8()).toStdString());
    }
    if (text.startsWith(u'/'))
        return FromNativePath(text.toUtf8().toStdString());
    QString path = text;
    return path.replace(u'/', u'\\');
}

} // namespace wb
