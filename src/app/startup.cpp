#include "app/startup.h"

#include "common/files.h"
#include "common/paths.h"
#include "gfx/graphicslibrary.h"
#include "platform/nativepath.h"
#include "services/dialogs.h"
#include "sound/soundlibrary.h"

#include <QRegularExpression>

#include <filesystem>

namespace wb
{

bool LoadLibraries(const QString &folder, Dialogs &dialogs)
{
    const auto tellMissing = [&dialogs](const char *file) {
        dialogs.Error(QLatin1String(file) + QStringLiteral(" not found."), ErrorTitle);
        return false;
    };
    if (!LoadSoundLibrary(folder))
        return tellMissing(SoundLibraryFile);
    if (LoadGraphicsLibrary(folder))
        return true;
    UnloadSoundLibrary();
    return tellMissing(GraphicsLibraryFile);
}

void UnloadLibraries()
{
    UnloadGraphicsLibrary();
    UnloadSoundLibrary();
}

namespace
{

// A path of the program, whatever way the argument is written in.
QString PathOfArgument(const QString &argument)
{
    static const QRegularExpression ofProgram(QStringLiteral("^(file://|[A-Za-z]:[\\\\/])"));
    if (ofProgram.match(argument).hasMatch())
        return FromNativePath(ToNativePath(PathFromUserText(argument)));
    return FromNativePath(ToNativeText(argument));
}

} // namespace

CommandLine ReadCommandLine(const QString &argument)
{
    const QString path = PathOfArgument(argument);
    const bool isFolder = FolderExists(path);
    const QString folder = isFolder ? path : GetFolder(path);
    // A folder that is not there opens nothing, also no file of that name in the current one.
    std::error_code missing;
    std::filesystem::current_path(ToNativePath(folder), missing);
    return {folder, isFolder || missing ? QString() : GetFileName(path)};
}

} // namespace wb
