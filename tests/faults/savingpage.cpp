// Saves in the window as a user does: savingpage PAGE FILES BUTTONS TARGET [TRACER…]
//
// Shows the first file, opens the page, clicks the buttons one after the other and closes the window; dialogs
// get the files to open and the target to save. Before the last button the tracer begins, with "-p" and the
// number of this process behind its arguments. Error boxes are printed as "title: text"; one makes the exit
// status 1.
#include "app/frmmain.h"
#include "app/startup.h"
#include "platform/clsregistryobject.h"
#include "platform/nativepath.h"
#include "services/dialogs.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QThread>

#include <cstdio>
#include <sys/prctl.h>
#include <unistd.h>

namespace
{

QString PathOf(const QString &name)
{
    return wb::FromNativePath(QDir::current().absoluteFilePath(name).toStdString());
}

class GivenDialogs : public wb::Dialogs
{
public:
    void Error(const QString &text, const QString &title) override
    {
        std::printf("%s: %s\n", qPrintable(title), qPrintable(text));
        hasFailed = true;
    }
    void Information(const QString &, const QString &) override {}
    bool Question(const QString &, const QString &) override { return true; }
    bool Warning(const QString &, const QString &) override { return true; }
    Choice YesNoCancel(const QString &, const QString &) override { return Choice::No; }
    QString OpenFile(const QString &, const QString &) override { return opened.front(); }
    QStringList OpenFiles(const QString &, const QString &) override { return opened; }
    QString SaveFile(const QString &, const QString &) override { return saved; }
    QString ChooseFolder(const QString &, const QString &) override { return {}; }
    std::optional<std::int32_t> ChooseColour(std::int32_t) override { return std::nullopt; }

    QStringList opened;
    QString saved;
    bool hasFailed = false;
};

constexpr int Patience = 10'000; // ms

bool IsTraced()
{
    QFile status(QStringLiteral("/proc/self/status"));
    return status.open(QIODevice::ReadOnly) && !status.readAll().contains("TracerPid:\t0\n");
}

// False when none came.
bool BeginTrace(QStringList tracer)
{
    if (tracer.isEmpty())
        return true;
    ::prctl(PR_SET_PTRACER, PR_SET_PTRACER_ANY);
    const QString program = tracer.takeFirst();
    QProcess::startDetached(program, tracer << QStringLiteral("-p")
                                            << QString::number(QApplication::applicationPid()));
    const QDeadlineTimer patience(Patience);
    while (!IsTraced() && !patience.hasExpired())
        QThread::msleep(1);
    return IsTraced();
}

// False when an error box or no tracer came.
bool Run(const QStringList &arguments)
{
    constexpr int OptionsPage = 8;

    GivenDialogs dialogs;
    const int page = arguments[1].toInt();
    for (const QString &name : arguments[2].split(u','))
        dialogs.opened << PathOf(name);
    dialogs.saved = PathOf(arguments[4]);
    // Only there settings and associations are kept: the target is the settings file.
    wb::clsRegistryObject registry(page == OptionsPage ? wb::RegistryFile() : std::string());
    wb::frmMain window(dialogs, page == OptionsPage ? dialogs.saved : QString(), registry);
    window.show();
    window.OpenCommandLine({PathOf(QStringLiteral(".")), arguments[2].section(u',', 0, 0)});
    window.ShowPage(page);
    QStringList buttons = arguments[3].split(u',');
    while (!buttons.isEmpty()) {
        auto *button = window.findChild<QAbstractButton *>(buttons.takeFirst());
        const QDeadlineTimer patience(Patience);
        while (!button->isEnabled() && !patience.hasExpired()) // what is opened may come later
            QApplication::processEvents();
        if (buttons.isEmpty() && !BeginTrace(arguments.sliced(5))) {
            std::puts("no tracer came");
            return false;
        }
        button->click();
    }
    window.close();
    return !dialogs.hasFailed;
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("PATH", {}); // without the desktop's tools, which write files of their own
    QApplication application(argc, argv);
    GivenDialogs dialogs;
    if (argc < 5 || !wb::LoadLibraries(QApplication::applicationDirPath(), dialogs))
        return 2;
    const bool isSaved = Run(QApplication::arguments());
    std::fflush(stdout);
    ::_exit(isSaved ? 0 : 1); // without ends that are no part of saving
}
