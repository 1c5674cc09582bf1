#include "services/dialogs.h"

#include "common/paths.h"
#include "common/wildcard.h"
#include "services/uitext.h"

#include <QRegularExpression>

#include <algorithm>

namespace wb
{

namespace
{

bool HasExtension(const QString &name)
{
    static const QRegularExpression extension(QStringLiteral("\\.[A-Za-z][A-Za-z0-9]{0,3}$"));
    return extension.match(name).hasMatch();
}

} // namespace

QString CompletedPath(const QString &typed, const QString &filter, const QString &proposed)
{
    const QString name = GetFileName(typed);
    const QStringList patterns = filter.section(u'|', 1, 1).split(u';');
    const bool fits = std::ranges::any_of(
        patterns, [&name](const QString &pattern) { return Wildcard(pattern).Matches(name); });
    if (name.isEmpty() || fits || (HasExtension(name) && name != GetFileName(proposed)))
        return typed;
    return typed + patterns.first().mid(1);
}

QString ReplaceQuestion(const QString &path)
{
    return QStringLiteral("Файл %1 уже существует. Заменить?").arg(GetFileName(path));
}

bool AskToSave(Dialogs &dialogs, const QString &fileName, const std::function<bool()> &save)
{
    const QString what =
        fileName.isEmpty() ? QStringLiteral("Новый файл") : QStringLiteral("Файл ") + fileName;
    switch (dialogs.YesNoCancel(what + QStringLiteral(" был изменен. Сохранить изменения?"),
                                QStringLiteral("Вопрос"))) {
    case Dialogs::Choice::Yes:
        return save();
    case Dialogs::Choice::No:
        return true;
    case Dialogs::Choice::Cancel:
        break;
    }
    return false;
}

void TellLeftOut(Dialogs &dialogs, std::int32_t frames)
{
    if (frames > 0)
        dialogs.Information(QStringLiteral("Памяти хватило не на все кадры. Не прочитано: %1").arg(frames),
                            UiText(TextInformation));
}

QString FileErrorText(FileError error)
{
    switch (error) {
    case FileError::PermissionDenied:
    case FileError::AccessError:
        return QStringLiteral("File access denied.");
    case FileError::DriveNotReady:
        return QStringLiteral("Drive not ready.");
    case FileError::PathNotFound:
        return QStringLiteral("Invalid path.");
    case FileError::None:
        break;
    }
    return {};
}

bool ReportFileError(Dialogs &dialogs, FileError error)
{
    const QString text = FileErrorText(error);
    if (!text.isEmpty())
        dialogs.Error(text, ErrorTitle);
    return !text.isEmpty();
}

} // namespace wb
