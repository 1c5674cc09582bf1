#include "archive/unpackjob.h"

#include "archive/unpacktarget.h"
#include "common/files.h"
#include "services/dialogs.h"

namespace wb
{

namespace
{

bool IsUsableTarget(const QString &folder)
{
    return folder.size() > 1 && folder[1] == u':' && !FileExists(folder);
}

// What an entry counts for in the bar.
std::int64_t SizeOf(const PkgEntry &entry)
{
    return entry.Type == PkgFolder ? 0 : std::max(entry.Size, 0);
}

std::int64_t SizeOf(const PkgEntryList &tree)
{
    std::int64_t size = 0;
    for (const PkgEntry &entry : tree)
        size += SizeOf(entry);
    return size;
}

} // namespace

JobEnd UnpackJob::Run(const UnpackOrder &order, const JobReport &report)
{
    const Running running(*this, report);
    m_error = Error::None;
    UnpackArchive(order);
    LogEnd(order);
    m_archive.reset();
    m_data = {};
    return End();
}

void UnpackJob::FailWith(Error error, const QString &boxText)
{
    m_error = error;
    Fail(boxText);
}

void UnpackJob::UnpackArchive(const UnpackOrder &order)
{
    if (order.Archive == nullptr && !FileExists(order.ArchivePath))
        return FailWith(Error::NotFound, QStringLiteral("File not found."));
    if (!IsUsableTarget(order.TargetFolder))
        return FailWith(Error::BadTarget, FileErrorText(FileError::PathNotFound));
    FileError error = FileError::None;
    m_archive = order.Archive != nullptr ? order.Archive : PkgOpenRead(order.ArchivePath, error);
    if (m_archive == nullptr)
        return FailWith(Error::NotOpened, FileErrorText(error));
    const std::int32_t start = order.Archive != nullptr ? order.StartOffset : m_archive->RootOffset;
    const PkgEntryList tree = PkgReadTree(*m_archive, start);
    StartProgress(QStringLiteral("Распаковка"), std::int32_t(tree.size()), SizeOf(tree));
    const std::optional<UnpackTarget> target = UnpackTarget::Make(order.TargetFolder);
    if (!target)
        return FailWith(Error::BadTarget, FileErrorText(FileError::PathNotFound));
    PkgWalk walk(*m_archive);
    UnpackFolder(walk, start, *target, order.LogPrefix);
}

void UnpackJob::UnpackFolder(PkgWalk &walk, std::int32_t offset, const UnpackTarget &target,
                             const QString &prefix)
{
    for (const PkgEntry &entry : walk.Enter(offset, prefix)) {
        if (HasFailed() || IsAborted())
            return;
        const QString logPath = entry.FullPath();
        if (!IsSafeEntryName(entry.Name))
            Log(QStringLiteral("ERR: Недопустимое имя: ") + logPath);
        else if (target.IsLinkThere(entry.Name))
            Log(QStringLiteral("ERR: На месте файла или папки лежит ссылка: ") + logPath);
        else
            UnpackEntry(walk, entry, target, logPath);
        Advance(1, SizeOf(entry));
        Yield();
    }
}

void UnpackJob::UnpackEntry(PkgWalk &walk, const PkgEntry &entry, const UnpackTarget &target,
                            const QString &logPath)
{
    if (entry.Type != PkgFolder)
        return UnpackFile(entry, target, logPath);
    Log(QStringLiteral("FLDR: ") + logPath);
    const std::optional<UnpackTarget> folder = target.MakeFolder(entry.Name);
    if (folder)
        UnpackFolder(walk, entry.Offset, *folder, logPath + u'\\');
    else
        FailWith(Error::BadTarget, FileErrorText(FileError::PathNotFound));
}

void UnpackJob::UnpackFile(const PkgEntry &entry, const UnpackTarget &target, const QString &logPath)
{
    ShowWork(target.Path() + u'\\' + entry.Name);
    Log((entry.Type == PkgStored ? QStringLiteral("FILE:  ") : QStringLiteral("ZL02: ")) + logPath);
    m_data.clear();
    const bool isWhole = PkgReadEntryData(*m_archive, m_data, entry);
    if (!target.WriteFile(entry.Name, m_data))
        Log(QStringLiteral("ERR: Ошибка записи файла"));
    else if (!isWhole)
        Log(QStringLiteral("ERR: Файл в архиве повреждён: ") + logPath);
}

void UnpackJob::LogEnd(const UnpackOrder &order)
{
    if (m_error == Error::NotFound)
        Log(QStringLiteral("Ошибка: файл не найден ") + order.ArchivePath);
    else if (m_error == Error::NotOpened)
        Log(QStringLiteral("Ошибка: нет доступа к файлу ") + order.ArchivePath);
    else if (m_error == Error::BadTarget)
        Log(QStringLiteral("Ошибка: неверный путь ") + order.TargetFolder);
    else
        Log(IsAborted() ? QStringLiteral("Прервано пользователем.") : QStringLiteral("Завершено."));
}

} // namespace wb
