#include "archive/packjob.h"

#include "archive/packahead.h"
#include "common/bytes.h"
#include "common/files.h"
#include "common/paths.h"
#include "platform/nativepath.h"
#include "services/dialogs.h"

#include <limits>

namespace wb
{

namespace
{

const QString TooLargeText = QStringLiteral("Archive is too large.");

// Offsets are signed 32-bit.
constexpr std::int64_t LargestArchive = std::numeric_limits<std::int32_t>::max();

bool IsUsableFolder(const QString &folder)
{
    return folder.size() > 1 && folder[1] == u':' && FolderExists(folder);
}

// What a directory says of an entry when the job ended before it.
PkgEntry NotReached(PkgEntry entry)
{
    if (entry.Type == PkgPacked)
        entry.Type = PkgStored;
    return entry;
}

// What an aborted job calls its archive when an older one, beside which it lies, has the name.
QString AbortedName(const QString &archivePath)
{
    const QString stem = GetFileTitle(archivePath) + QStringLiteral(" (прервано");
    QString name = stem + QStringLiteral(").pkg");
    for (int number = 2; FileExists(NormalizePath(GetFolder(archivePath) + u'\\' + name)); ++number)
        name = stem + QStringLiteral(" %1).pkg").arg(number);
    return name;
}

} // namespace

JobEnd PackJob::Run(const PackOrder &order, const JobReport &report)
{
    const Running running(*this, report);
    m_error = Error::None;
    m_end = m_totalIn = m_totalOut = 0;
    PackArchive(order);
    LogEnd(order);
    return End();
}

void PackJob::FailWith(Error error, const QString &boxText)
{
    m_error = error;
    m_file.Abandon();
    Fail(boxText);
}

void PackJob::PackArchive(const PackOrder &order)
{
    if (!IsUsableFolder(order.Folder))
        return FailWith(Error::BadFolder, FileErrorText(FileError::PathNotFound));
    const FileFacts older = GetFileFacts(ToNativePath(order.ArchivePath));
    if (!OpenArchive(order))
        return;
    StartProgress(QStringLiteral("Поиск файлов"), 0, 0);
    const PackPlan plan({order.Folder, order.StoreOnly, older}, [this] {
        Yield();
        return !IsAborted();
    });
    if (plan.Error() != FileError::None)
        return FailWith(Error::BadFolder, FileErrorText(plan.Error()));
    WriteTree(plan);
    if (HasFailed())
        return;
    const bool isAside = IsAborted() && older.Exists;
    if (isAside)
        m_file.SetTargetName(ToNativeName(AbortedName(FromNativePath(m_file.Target()))));
    const QString written = FromNativePath(m_file.Target());
    if (const FileError error = m_file.Commit(); error != FileError::None)
        FailWith(Error::NotWritten, FileErrorText(error));
    else if (isAside)
        Log(QStringLiteral("Записанное сохранено: ") + written);
}

bool PackJob::OpenArchive(const PackOrder &order)
{
    const FileError error = m_file.Open(ToNativePath(order.ArchivePath), {.IsBeside = true});
    if (error == FileError::None) {
        ByteArray header(std::size_t(PkgHeaderSize), 0);
        PutLong(header, 0, PkgHeaderSize); // the root's directory follows
        return Reserve(PkgHeaderSize) && WriteAt(0, header);
    }
    if (FileExists(order.ArchivePath))
        FailWith(Error::NotReplaced, FileErrorText(FileError::AccessError));
    else
        FailWith(Error::NotCreated, FileErrorText(error));
    return false;
}

void PackJob::WriteTree(const PackPlan &plan)
{
    StartProgress(QStringLiteral("Запаковка"), plan.ItemCount(), plan.ByteCount());
    PackAhead ahead(plan, m_threads);
    WriteFolder(ahead, plan.Root(), {});
}

// The folder's directory comes before all that it names, and is written when that is known.
void PackJob::WriteFolder(PackAhead &ahead, const PackFolder &folder, const QString &logPrefix)
{
    for (const QString &error : folder.Errors)
        Log(error);
    const std::int64_t directory = m_end;
    if (!Reserve(PkgDirectoryHeaderSize + std::int64_t(folder.Items.size()) * PkgRecordSize))
        return;
    PkgEntryList list;
    list.reserve(folder.Items.size());
    for (const PackItem &item : folder.Items) {
        if (IsAborted() || HasFailed()) {
            list.push_back(NotReached(item.Entry));
            continue;
        }
        list.push_back(WriteItem(ahead, item, logPrefix + item.Entry.Name));
        Advance(1, 0);
        Yield();
    }
    if (!HasFailed())
        WriteAt(directory, PkgDirectoryBytes(list));
}

PkgEntry PackJob::WriteItem(PackAhead &ahead, const PackItem &item, const QString &logPath)
{
    PkgEntry entry = item.Entry;
    entry.Offset = static_cast<std::int32_t>(m_end);
    if (entry.Type == PkgFolder) {
        Log(QStringLiteral("FLDR: ") + logPath);
        WriteFolder(ahead, *item.Folder, logPath + u'\\');
        return entry;
    }
    ShowWork(item.Path);
    std::int64_t bytesLeft = item.Size;
    const PackedFile file = ahead.Next([this, &bytesLeft] {
        const auto chunk = std::min<std::int64_t>(bytesLeft, ZlChunkSize);
        bytesLeft -= chunk;
        Advance(0, chunk);
        Yield();
    });
    if (file.Outcome == PackedFile::State::TooLong)
        FailWith(Error::TooLarge, TooLargeText);
    else
        WriteFile(entry, logPath, file);
    Advance(0, bytesLeft);
    return entry;
}

void PackJob::WriteFile(PkgEntry &entry, const QString &logPath, const PackedFile &file)
{
    if (!Reserve(std::int64_t(file.Bytes.size())) || !WriteAt(entry.Offset, file.Bytes))
        return;
    entry.Size = file.Size;
    entry.PackedSize = ByteCount(file.Bytes);
    m_totalIn += file.Size;
    if (file.Size > 0)
        m_totalOut += entry.PackedSize - 4;

    if (entry.Type == PkgStored) {
        Log(QStringLiteral("FILE:  ") + logPath);
        if (file.Outcome == PackedFile::State::Unreadable)
            Log(QStringLiteral("ERR: Ошибка чтения файла: ") + logPath);
    } else if (file.Size == 0) {
        entry.Type = PkgStored;
        Log(QStringLiteral("FILE:  %1 (Ошибка чтения файла)").arg(logPath));
    } else {
        const std::int64_t percent = std::int64_t(entry.PackedSize) * 100 / entry.Size;
        Log(QStringLiteral("ZL02: %1 (Сжатие: %2%)").arg(logPath, QString::number(percent)));
    }
}

// Lays out the next bytes of the archive, which can't be longer than its offsets reach.
bool PackJob::Reserve(std::int64_t size)
{
    if (size > LargestArchive - m_end) {
        FailWith(Error::TooLarge, TooLargeText);
        return false;
    }
    m_end += size;
    return true;
}

bool PackJob::WriteAt(std::int64_t offset, ByteView bytes)
{
    const FileError error = m_file.WriteAt(offset, bytes);
    if (error != FileError::None)
        FailWith(Error::NotWritten, FileErrorText(error));
    return error == FileError::None;
}

void PackJob::LogEnd(const PackOrder &order)
{
    switch (m_error) {
    case Error::NotCreated:
        return Log(QStringLiteral("Ошибка: неверный путь к файлу ") + order.ArchivePath);
    case Error::NotReplaced:
        return Log(QStringLiteral("Ошибка: нет доступа к файлу ") + order.ArchivePath);
    case Error::BadFolder:
        return Log(QStringLiteral("Ошибка: неверный путь ") + order.Folder);
    case Error::NotWritten:
        return Log(QStringLiteral("ERR: Ошибка записи архива ") + order.ArchivePath);
    case Error::TooLarge:
        return Log(QStringLiteral("ERR: Архив не может быть больше %1 байт").arg(LargestArchive));
    case Error::None:
        break;
    }
    if (IsAborted())
        return Log(QStringLiteral("Прервано пользователем."));
    if (m_totalIn > 0)
        Log(QStringLiteral("Итог сжатия: %1%").arg(m_totalOut * 100 / m_totalIn));
    Log(QStringLiteral("Завершено."));
}

} // namespace wb
