#include "app/startup.h"

#include "gfx/graphicslibrary.h"
#include "platform/nativepath.h"
#include "services/dialogs.h"

#include <QDir>
#include <QFileInfo>

namespace wb
{

bool LoadLibraries(const QString &folder, Dialogs &dialogs)
{
    if (LoadGraphicsLibrary(folder))
        return true;
    dialogs.Error(QLatin1String(GraphicsLibraryFile) + QStringLiteral(" not found."), ErrorTitle);
    return false;
}

void UnloadLibraries()
{
    UnloadGraphicsLibrary();
}

CommandLine ReadCommandLine(const QString &argument)
{
    const QFileInfo file(argument.startsWith(QStringLiteral("file://")) ? argument.mid(7) : argument);
    const bool isFolder = file.isDir();
    const QString folder = isFolder ? file.filePath() : file.path();
    QDir::setCurrent(folder);
    return {FromNativePath(QDir::currentPath().toStdString()), isFolder ? QString() : file.fileName()};
}

} // namespace wb
