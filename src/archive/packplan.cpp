#include "archive/packplan.h"

#include "common/paths.h"
#include "platform/folderscan.h"
#include "platform/nativepath.h"

#include <QHash>

#include <algorithm>

namespace wb
{

namespace
{

constexpr std::int64_t WorthCompressing = 128;

// What the names of one folder lose in an archive, where they are looked up ignoring case.
void CheckNames(const PackFolder &folder, const QString &prefix, std::vector<QString> &errors)
{
    QHash<QString, QString> written;
    for (const PackItem &item : folder.Items) {
        const QString &name = item.Entry.Name;
        const QString stored = PkgWrittenName(name);
        if (stored != name.left(PkgNameSize) || !IsSafeEntryName(stored))
            errors.push_back(QStringLiteral("ERR: Имя не сохранится в архиве: ") + prefix + name);
        const QString key = stored.toUpper();
        const auto same = written.constFind(key);
        if (same == written.constEnd())
            written.insert(key, name);
        else
            errors.push_back(
                QStringLiteral("ERR: Имена совпадут в архиве: %1%2, %1%3").arg(prefix, *same, name));
    }
}

} // namespace

bool SkipCompression(const QString &path, std::int64_t length)
{
    return length < WorthCompressing ||
           QStringLiteral("jpg;jpe;jpeg;png").contains(GetExtension(path), Qt::CaseInsensitive);
}

PackPlan::PackPlan(Options options, std::function<bool()> goesOn)
    : m_options(std::move(options)), m_goesOn(std::move(goesOn))
{
    const std::string native = ToNativePath(m_options.Folder);
    m_enclosing.push_back(GetFileFacts(native));
    ListFolderForPack(m_root, m_options.Folder, native, {});
}

void PackPlan::ListFolderForPack(PackFolder &folder, const QString &path, const std::string &native,
                                 const QString &logPrefix)
{
    std::vector<FolderEntry> found;
    const FileError error = ScanFolder(native, found);
    if (&folder == &m_root)
        m_error = error;
    else if (error != FileError::None)
        folder.Errors.push_back(QStringLiteral("ERR: Нет доступа к папке: ") + logPrefix);
    std::stable_partition(found.begin(), found.end(),
                          [](const FolderEntry &entry) { return entry.Kind == EntryKind::Folder; });
    folder.Items.reserve(found.size()); // m_files keeps their addresses
    for (const FolderEntry &entry : found) {
        PackItem item;
        item.Entry.Name = DisplayName(entry.Name);
        item.Path = path + u'\\' + entry.Name;
        item.Native = NativeChild(native, entry.Name);
        if (entry.Kind == EntryKind::Folder)
            AddFolder(folder, std::move(item), logPrefix);
        else if (!entry.IsHidden())
            AddFile(folder, std::move(item));
    }
    CheckNames(folder, logPrefix, folder.Errors);
    m_isStopped = m_isStopped || !m_goesOn();
}

void PackPlan::AddFolder(PackFolder &folder, PackItem item, const QString &logPrefix)
{
    const QString logPath = logPrefix + item.Entry.Name;
    item.Entry.Type = PkgFolder;
    item.Folder = std::make_unique<PackFolder>();
    const FileFacts facts = GetFileFacts(item.Native);
    // A link may lead to a folder that it lies in.
    const bool isEnclosing = std::ranges::any_of(
        m_enclosing, [&facts](const FileFacts &enclosing) { return enclosing.IsSameAs(facts); });
    if (isEnclosing) {
        item.Folder->Errors.push_back(QStringLiteral("ERR: Папка ведёт сама в себя: ") + logPath);
    } else if (!m_isStopped) {
        m_enclosing.push_back(facts);
        ListFolderForPack(*item.Folder, item.Path, item.Native, logPath + u'\\');
        m_enclosing.pop_back();
    }
    ++m_items;
    folder.Items.push_back(std::move(item));
}

void PackPlan::AddFile(PackFolder &folder, PackItem item)
{
    const FileFacts facts = GetFileFacts(item.Native);
    if (facts.IsSameAs(m_options.Archive))
        return;
    item.Size = facts.Size;
    const bool isStored = m_options.StoreOnly || SkipCompression(item.Path, item.Size);
    item.Entry.Type = isStored ? PkgStored : PkgPacked;
    ++m_items;
    m_bytes += item.Size;
    folder.Items.push_back(std::move(item));
    m_files.push_back(&folder.Items.back());
}

} // namespace wb
