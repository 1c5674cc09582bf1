#include "app/frmmain.h"
#include "app/skin.h"
#include "app/startup.h"
#include "platform/clsregistryobject.h"
#include "services/settings.h"
#include "widgets/desktopdialogs.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QTranslator>

int main(int argc, char **argv)
{
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
        const QStringList arguments = QApplication::arguments();
        if (arguments.size() > 1)
            window.OpenCommandLine(wb::ReadCommandLine(arguments.at(1)));
        result = QApplication::exec();
    }
    wb::UnloadLibraries();
    return result;
}
