// workbench-screenshot: pictures of the real main window, for the documents and for machines without a
// display.
#include "app/frmmain.h"
#include "app/skin.h"
#include "app/startup.h"
#include "platform/nativepath.h"
#include "widgets/desktopdialogs.h"

#include <QApplication>
#include <QEventLoop>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>

namespace
{

constexpr int SettlingTime = 300; // ms

int TakeScreenshot(const QStringList &arguments)
{
    const QStringList size = arguments[2].split(u'x');
    const QTemporaryDir scratch;
    wb::DesktopDialogs dialogs;
    if (size.size() != 2 || !scratch.isValid() ||
        !wb::LoadLibraries(QApplication::applicationDirPath(), dialogs))
        return 1;
    bool saved = false;
    {
        // Settings of its own: the user's stay as they are.
        wb::frmMain window(dialogs,
                           wb::FromNativePath(scratch.filePath(QStringLiteral("Options.ini")).toStdString()));
        window.resize(size[0].toInt(), size[1].toInt());
        window.show();
        if (arguments.size() > 4) {
            const wb::CommandLine asked = wb::ReadCommandLine(arguments[4]);
            window.OpenCommandLine(asked.folder, asked.name);
        }
        window.ShowPage(arguments[3].toInt());
        // Not QApplication's own loop, whose end closes the window.
        QEventLoop settling;
        QTimer::singleShot(SettlingTime, &settling, &QEventLoop::quit);
        settling.exec();
        saved = window.grab().save(arguments[1]);
    }
    wb::UnloadLibraries();
    return saved ? 0 : 1;
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() < 4) {
        std::fprintf(stderr, "usage: workbench-screenshot OUT.png WIDTHxHEIGHT PAGE [FILE]\n");
        return 2;
    }
    wb::ApplySkin(application);
    return TakeScreenshot(arguments);
}
