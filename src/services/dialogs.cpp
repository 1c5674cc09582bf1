#include "services/dialogs.h"

namespace wb
{

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
