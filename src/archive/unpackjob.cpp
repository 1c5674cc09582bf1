#include "archive/unpackjob.h"

#include "common/files.h"
#include "services/dialogs.h"

#include <algorithm>
#include <limits>
#include <numeric>

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

} // namespace

// An entry in the order of extraction: what a folder holds follows it.
struct UnpackJob::Step {
    PkgEntry entry;
    std::size_t depth;     // 0: directly in the target folder
    bool isBroken = false; // a folder whose directory can't be read whole
};

UnpackJob::UnpackJob(Progress &progress, int threads) : ArchiveJob(progress), m_threads(threads) {}

UnpackJob::~UnpackJob() = default;

JobEnd UnpackJob::Run(const UnpackOrder &order, const JobReport &report)
{
    const Running running(*this, report);
    m_error = Error::None;
    UnpackArchive(order);
    LogEnd(order);
    m_archive.reset();
    m_steps = {};
    m_targets = {};
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
    if (!OpenArchive(order))
        return;
    std::optional<UnpackTarget> target = UnpackTarget::Make(order.TargetFolder);
    if (!target)
        return FailWith(Error::BadTarget, FileErrorText(FileError::PathNotFound));
    m_targets.push_back(std::move(*target));
    const std::int32_t start = order.Archive != nullptr ? order.StartOffset : m_archive->RootOffset;
    PkgWalk walk(*m_archive);
    if (!ListSteps(walk, start, order.LogPrefix))
        Log(QStringLiteral("ERR: Каталог архива повреждён"));
    UnpackSteps();
}

bool UnpackJob::OpenArchive(const UnpackOrder &order)
{
    FileError error = FileError::None;
    m_archive = order.Archive != nullptr ? order.Archive : PkgOpenRead(order.ArchivePath, error);
    if (m_archive == nullptr)
        FailWith(Error::NotOpened, FileErrorText(error));
    return m_archive != nullptr;
}

bool UnpackJob::ListSteps(PkgWalk &walk, std::int32_t position, const QString &folder)
{
    const std::size_t depth = m_steps.empty() ? 0 : m_steps.back().depth + 1;
    PkgEntryList entries = walk.Enter(position, folder);
    const bool isWhole = walk.IsWhole();
    for (PkgEntry &entry : entries) {
        const std::size_t step = m_steps.size();
        m_steps.push_back({std::move(entry), depth});
        const PkgEntry &added = m_steps.back().entry;
        if (added.Type == PkgFolder)
            m_steps[step].isBroken = !ListSteps(walk, added.Offset, added.FullPath() + u'\\');
    }
    return isWhole;
}

std::vector<const PkgEntry *> UnpackJob::Files() const
{
    std::vector<const PkgEntry *> files;
    for (const Step &step : m_steps)
        if (step.entry.Type != PkgFolder)
            files.push_back(&step.entry);
    return files;
}

void UnpackJob::UnpackSteps()
{
    const std::int64_t bytes =
        std::accumulate(m_steps.begin(), m_steps.end(), std::int64_t(0),
                        [](std::int64_t sum, const Step &step) { return sum + SizeOf(step.entry); });
    StartProgress(QStringLiteral("Распаковка"), std::int32_t(m_steps.size()), bytes);
    UnpackAhead ahead(m_archive, Files(), m_threads);
    constexpr std::size_t none = std::numeric_limits<std::size_t>::max();
    std::size_t refused = none; // how deep the folder lies that is passed over, with all that is deeper
    for (const Step &step : m_steps) {
        if (HasFailed() || IsAborted())
            return;
        const UnpackedFile file = step.entry.Type == PkgFolder ? UnpackedFile() : ahead.Next();
        if (step.depth <= refused)
            refused = UnpackEntry(step, file) ? none : step.depth;
        Advance(1, SizeOf(step.entry));
        Yield();
    }
}

bool UnpackJob::UnpackEntry(const Step &step, const UnpackedFile &file)
{
    m_targets.erase(m_targets.begin() + std::ptrdiff_t(step.depth) + 1, m_targets.end());
    const QString &name = step.entry.Name;
    if (!IsSafeEntryName(name)) {
        Log(QStringLiteral("ERR: Недопустимое имя: ") + step.entry.FullPath());
        return false;
    }
    if (m_targets.back().IsLinkThere(name)) {
        Log(QStringLiteral("ERR: На месте файла или папки лежит ссылка: ") + step.entry.FullPath());
        return false;
    }
    if (step.entry.Type == PkgFolder)
        UnpackFolder(step);
    else
        UnpackFile(step, file);
    return true;
}

void UnpackJob::UnpackFolder(const Step &step)
{
    Log(QStringLiteral("FLDR: ") + step.entry.FullPath());
    if (step.isBroken)
        Log(QStringLiteral("ERR: Папка в архиве повреждена: ") + step.entry.FullPath());
    std::optional<UnpackTarget> folder = m_targets.back().MakeFolder(step.entry.Name);
    if (folder)
        m_targets.push_back(std::move(*folder));
    else
        FailWith(Error::BadTarget, FileErrorText(FileError::PathNotFound));
}

void UnpackJob::UnpackFile(const Step &step, const UnpackedFile &file)
{
    const PkgEntry &entry = step.entry;
    const UnpackTarget &target = m_targets.back();
    ShowWork(target.Path() + u'\\' + entry.Name);
    Log((entry.Type == PkgStored ? QStringLiteral("FILE:  ") : QStringLiteral("ZL02: ")) + entry.FullPath());
    if (!target.WriteFile(entry.Name, file.Bytes))
        Log(QStringLiteral("ERR: Ошибка записи файла"));
    else if (!file.IsWhole)
        Log(QStringLiteral("ERR: Файл в архиве повреждён: ") + entry.FullPath());
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
