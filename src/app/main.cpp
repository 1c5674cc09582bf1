#include "app/frmmain.h"
#include "app/skin.h"
#include "app/startup.h"
#include "platform/clsregistryobject.h"
#include "platform/nativepath.h"
#include "platform/terminal.h"
#include "services/settings.h"
#include "widgets/desktopdialogs.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QTranslator>

int main(int argc, char **argv)
{
    wb::ReserveStandardStreams();
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("workbench"));
    QApplication::setApplicationVersion(QStringLiteral(WORKBENCH_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("workbench"));
    wb::ApplySkin(application);
    QTranslator boxes;
    if (boxes.load(QStringLiteral("qtbase_ru"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(&boxes); // the interface is Russian, whatever the desktop's language

    wb::DesktopDialogs dialogs;
    if (!wb::LoadLibraries(QApplication::applicationDirPath(), dialogs))
        return 1;
    int result = 0;
    {
        wb::clsRegistryObject registry(wb::RegistryFile());
        wb::frmMain window(dialogs, wb::SettingsPath(), registry);
        dialogs.SetOwner(&window);
        window.show();
        if (argc > 1) // what Qt has left
            window.OpenCommandLine(wb::ReadCommandLine(wb::FromNativeText(argv[1])));
        result = QApplication::exec();
    }
    wb::UnloadLibraries();
    return result;
}
