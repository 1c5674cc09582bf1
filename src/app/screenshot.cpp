// workbench-screenshot: pictures of the real main window, for the documents and for machines without a
// display.
#include "app/frmmain.h"
#include "app/skin.h"
#include "app/startup.h"
#include "common/paths.h"
#include "platform/clsregistryobject.h"
#include "platform/nativepath.h"
#include "services/dialogs.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QEventLoop>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>

namespace
{

constexpr int SettlingTime = 300; // ms

// By which pages get what the viewer has opened; the DAT editor opens files itself. Null for the others.
constexpr const char *TakingButtons[wb::frmMain::PageCount] = {
    nullptr, "cmdCopyGICR", "cmdCopyGAICRAll", "cmdCopyHAICRAll", "cmdCopyAnimCRAll", "cmdDAT_Open"};

// Nobody is there to answer a box.
class PrintedDialogs : public wb::Dialogs
{
public:
    void Error(const QString &text, const QString &) override
    {
        std::fprintf(stderr, "workbench-screenshot: %s\n", qPrintable(text));
    }
    void Information(const QString &, const QString &) override {}
    bool Question(const QString &, const QString &) override { return false; }
    bool Warning(const QString &, const QString &) override { return false; }
    Choice YesNoCancel(const QString &, const QString &) override { return Choice::No; }
    QString OpenFile(const QString &, const QString &) override { return opened; }
    QStringList OpenFiles(const QString &, const QString &) override { return {}; }
    QString SaveFile(const QString &, const QString &) override { return {}; }
    QString ChooseFolder(const QString &, const QString &) override { return {}; }
    std::optional<std::int32_t> ChooseColour(std::int32_t) override { return std::nullopt; }

    QString opened; // what is chosen in the dialog to open a file
};

struct Order {
    QString target;
    QSize size;
    int page = -1;
    QString file;
};

Order ReadOrder(const QStringList &arguments)
{
    Order order;
    if (arguments.size() < 4)
        return order;
    const QStringList size = arguments[2].split(u'x');
    bool isPage = false;
    const int page = arguments[3].toInt(&isPage);
    if (size.size() != 2 || !isPage || page >= wb::frmMain::PageCount)
        return order;
    order = {QDir::current().absoluteFilePath(arguments[1]),
             {size[0].toInt(), size[1].toInt()},
             page,
             arguments.value(4)};
    return order;
}

bool TakeScreenshot(const Order &order, PrintedDialogs &dialogs)
{
    const QTemporaryDir scratch;
    // Settings and a registry of its own: the user's stay as they are.
    wb::clsRegistryObject registry;
    const QString settings = scratch.filePath(QStringLiteral("Options.ini"));
    wb::frmMain window(dialogs, wb::FromNativePath(settings.toStdString()), registry);
    window.resize(order.size);
    window.show();
    while (!window.IsFirstFrameShown())
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    if (!order.file.isEmpty()) {
        const wb::CommandLine asked = wb::ReadCommandLine(order.file);
        window.OpenCommandLine(asked);
        dialogs.opened = wb::PathIn(asked.folder, asked.name);
    }
    if (const char *button = TakingButtons[order.page]; button != nullptr && !order.file.isEmpty())
        window.findChild<QAbstractButton *>(QLatin1String(button))->click();
    window.ShowPage(order.page);
    // Not QApplication's own loop, whose end closes the window.
    QEventLoop settling;
    QTimer::singleShot(SettlingTime, &settling, &QEventLoop::quit);
    settling.exec();
    return window.grab().save(order.target);
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    const Order order = ReadOrder(QApplication::arguments());
    if (order.page < 0 || order.size.isEmpty()) {
        std::fprintf(stderr, "usage: workbench-screenshot OUT.png WIDTHxHEIGHT PAGE(0..%d) [FILE]\n",
                     wb::frmMain::PageCount - 1);
        return 2;
    }
    PrintedDialogs dialogs;
    if (!wb::LoadLibraries(QApplication::applicationDirPath(), dialogs))
        return 1;
    wb::ApplySkin(application);
    const bool isTaken = TakeScreenshot(order, dialogs);
    wb::UnloadLibraries();
    return isTaken ? 0 : 1;
}
