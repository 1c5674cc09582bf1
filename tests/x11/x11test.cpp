// What only a real X server and a window manager show. Events come from xdotool, as from a person's hands.
#include "platform/desktop/windows.h"
#include "support/windowtest.h"
#include "widgets/filelistbox.h"

#include <QApplication>
#include <QFile>
#include <QProcess>
#include <QScreen>

#include <filesystem>

namespace wb
{

namespace
{

constexpr int Patience = 5000; // ms

// Runs a program to its end while our own events go on; gives what it printed.
QString OutputOf(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    EXPECT_TRUE(QTest::qWaitFor([&process] { return process.state() == QProcess::NotRunning; }, Patience));
    return QString::fromUtf8(process.readAllStandardOutput());
}

void Hand(const QString &command)
{
    OutputOf(QStringLiteral("xdotool"), command.split(u' '));
}

class X11 : public WindowTest
{
protected:
    void SetUp() override
    {
        folder.AddGi("a.gi", MakePicture(200, 100, 0xFFFF0000), 0, 0);
        folder.AddGi("big.gi", MakePicture(3000, 2000, 0xFF00FF00), 0, 0);
    }

    void OpenInFront(const QString &name = {})
    {
        OpenWindow(name);
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
        Settle();
    }

    // Lets the window manager's answers arrive.
    static void Settle() { QTest::qWait(150); }

    static QString At(QPoint point) { return QStringLiteral("%1 %2").arg(point.x()).arg(point.y()); }
    QString At(const QWidget *widget, QPoint offset) const { return At(widget->mapToGlobal(offset)); }
    QString Centre(const char *name) const { return At(Find(name), Find(name)->rect().center()); }
    QString Row(const QString &name) const
    {
        const QModelIndex index = List()->model()->index(List()->FindName(name, 0), 0);
        return At(List()->viewport(), List()->visualRect(index).center());
    }

    // Drags from where `from` is by the offset, in two steps and no faster than a hand does.
    static void Drag(const QString &from, QPoint by)
    {
        Hand(QStringLiteral("mousemove %1 mousedown 1").arg(from));
        Settle();
        Hand(QStringLiteral("mousemove_relative -- %1").arg(At(by / 2)));
        Hand(QStringLiteral("mousemove_relative -- %1").arg(At(by - by / 2)));
        Hand(QStringLiteral("mouseup 1"));
        Settle();
    }

    static QString StatesOf(const QWidget *widget)
    {
        Settle();
        return OutputOf(QStringLiteral("xprop"), {QStringLiteral("-id"), QString::number(widget->winId()),
                                                  QStringLiteral("_NET_WM_STATE")});
    }

    QColor OnScreen(const QWidget *widget, QPoint position) const
    {
        const QPoint point = widget->mapToGlobal(position);
        return window->screen()->grabWindow(0, point.x(), point.y(), 1, 1).toImage().pixelColor(0, 0);
    }
};

TEST_F(X11, AClickShowsThePictureAndKeysZoomIt)
{
    OpenInFront();
    Hand(QStringLiteral("mousemove %1 click 1").arg(Row(QStringLiteral("a.gi"))));
    EXPECT_TRUE(QTest::qWaitFor([this] { return Text("lblSize") == QStringLiteral("|  200 x 100"); }));
    Settle();
    auto *area = Find("picPictureBorder");
    EXPECT_EQ(QColor(0xFF, 0, 0), OnScreen(area, area->rect().center()));
    EXPECT_NE(QColor(0xFF, 0, 0), OnScreen(area, area->rect().center() + QPoint(150, 0)));
    Hand(QStringLiteral("key plus"));
    EXPECT_TRUE(QTest::qWaitFor([this] { return Text("lblZoom") == QStringLiteral("|  200%"); }));
    Settle();
    EXPECT_EQ(QColor(0xFF, 0, 0), OnScreen(area, area->rect().center() + QPoint(150, 0)));
}

TEST_F(X11, TheWheelScrollsTheListFromAnywhere)
{
    for (int i = 0; i < 60; ++i)
        folder.MakeFolder(std::to_string(100 + i));
    OpenInFront();
    Hand(QStringLiteral("mousemove %1 click 5").arg(Centre("picPicture")));
    EXPECT_TRUE(QTest::qWaitFor([this] { return List()->TopIndex() == 3; }));
    Hand(QStringLiteral("click 5 click 4 click 4"));
    EXPECT_TRUE(QTest::qWaitFor([this] { return List()->TopIndex() == 0; }));
}

TEST_F(X11, ALargePictureIsDragged)
{
    OpenInFront(QStringLiteral("big.gi"));
    Drag(Centre("picPictureBorder"), {-120, -80});
    EXPECT_EQ(QPoint(-120, -80), Find("picPicture")->pos());
}

TEST_F(X11, PagesComeForwardByAClick)
{
    OpenInFront();
    Hand(QStringLiteral("mousemove %1 click 1").arg(Centre("cmdPage(8)")));
    EXPECT_TRUE(QTest::qWaitFor([this] { return Find("picPage(8)")->isVisible(); }));
    Hand(QStringLiteral("mousemove %1 click 1").arg(Centre("cmdPage(0)")));
    EXPECT_TRUE(QTest::qWaitFor([this] { return List()->isVisible() && List()->hasFocus(); }));
}

TEST_F(X11, TheTitleBarMovesTheWindowAndAnEdgeResizesIt)
{
    OpenInFront();
    const QPoint before = window->pos();
    Drag(At(window.get(), {400, 18}), {-60, 40});
    EXPECT_EQ(before + QPoint(-60, 40), window->pos());
    const QSize size = window->size();
    Drag(At(window.get(), {window->width() - 2, 300}), {100, 0});
    EXPECT_EQ(size + QSize(100, 0), window->size());
    Drag(At(window.get(), {window->width() - 2, 300}), {-400, 0});
    EXPECT_EQ(1024, window->width());
    Hand(QStringLiteral("mousemove %1 click 1").arg(At(window.get(), {400, 18}))); // a tap, as of a touchpad
    Settle();
    EXPECT_TRUE(window->isActiveWindow());
}

TEST_F(X11, AFileIsDroppedFromAnotherProgram)
{
    OpenInFront();
    window->move(400, 150);
    Settle();
    QProcess source;
    source.start(QApplication::applicationDirPath() + QStringLiteral("/x11_dragsource"),
                 {folder.NativeText("a.gi")});
    ASSERT_FALSE(
        OutputOf(QStringLiteral("xdotool"), {QStringLiteral("search"), QStringLiteral("--sync"),
                                             QStringLiteral("--name"), QStringLiteral("x11_dragsource")})
            .isEmpty());
    Settle();
    Hand(QStringLiteral("mousemove 60 60 mousedown 1"));
    for (const QString &step : {QStringLiteral("90 90"), QStringLiteral("300 300"), Centre("picPicture"),
                                At(Find("picPicture"), {50, 50})}) {
        Hand(QStringLiteral("mousemove %1").arg(step));
        Settle();
    }
    Hand(QStringLiteral("mouseup 1"));
    EXPECT_TRUE(QTest::qWaitFor([this] { return Text("lblSize") == QStringLiteral("|  200 x 100"); }));
    source.kill();
    source.waitForFinished();
}

TEST_F(X11, TheTitleBarTellsWhetherTheWindowIsInFront)
{
    OpenInFront();
    auto *bar = Find("picCaption");
    const QColor active = OnScreen(bar, {300, 2});
    QWidget other;
    other.setGeometry(0, 0, 100, 100);
    other.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    EXPECT_TRUE(QTest::qWaitFor([&] { return OnScreen(bar, {300, 2}) != active; }));
    EXPECT_FALSE(IsForeground(*window));
    other.close();
    window->activateWindow();
    EXPECT_TRUE(QTest::qWaitFor([&] { return OnScreen(bar, {300, 2}) == active; }));
}

TEST_F(X11, AWindowIsKeptOnTopWithoutMovingIt)
{
    OpenInFront();
    const QRect place = window->geometry();
    SetTopMost(*window, true);
    EXPECT_TRUE(StatesOf(window.get()).contains(QStringLiteral("_NET_WM_STATE_ABOVE")));
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(place, window->geometry());
    SetTopMost(*window, false);
    EXPECT_FALSE(StatesOf(window.get()).contains(QStringLiteral("_NET_WM_STATE_ABOVE")));
}

TEST_F(X11, ThePreviewIsATransparentWindowThatIsDraggedAndOnTopByTheRules)
{
    folder.AddPng("half.png", MakePicture(100, 50, [](int x, int) { return x < 50 ? 0x80FF0000 : 0; }));
    folder.AddPng("wide.png", MakePicture(500, 400, 0x80FF0000));
    Settings settings = DefaultSettings();
    settings.BackColor2 = 0xFF0000;
    settings.ViewOnTop = true;
    WriteSettings(settings);
    QWidget behind(nullptr, Qt::FramelessWindowHint);
    behind.setStyleSheet(QStringLiteral("background: #00FF00"));
    behind.setGeometry(1200, 600, 700, 400);
    behind.show();
    OpenInFront(QStringLiteral("half.png"));
    window->move(0, 0);
    Hand(QStringLiteral("mousemove %1 click 1").arg(Centre("cmdAlphaView")));
    const QWidget *view = Find("frmView");
    const auto shows = [&](const char *halves) {
        return QTest::qWaitFor([&] {
            const QString left = OnScreen(view, {25, 25}).name();
            return left + OnScreen(view, {75, 25}).name() == QLatin1String(halves);
        });
    };
    const auto isOnTop = [&] { return StatesOf(view).contains(QStringLiteral("_NET_WM_STATE_ABOVE")); };
    EXPECT_TRUE(shows("#80007f#0000ff"));
    QProcess compositor;
    compositor.start(QStringLiteral("picom"),
                     {QStringLiteral("--backend=xrender"), QStringLiteral("--config=/dev/null")});
    EXPECT_TRUE(shows("#807f00#00ff00"));
    compositor.terminate();
    EXPECT_TRUE(compositor.waitForFinished());
    EXPECT_TRUE(shows("#80007f#0000ff"));

    // A click moves nothing, and takes back no move.
    const auto clickAndShowOthers = [&] {
        Hand(QStringLiteral("mousemove %1 click 1").arg(At(view, {75, 25})));
        for (const char *name : {"wide.png", "half.png"})
            ClickRow(QLatin1String(name));
        Settle();
        return view->pos();
    };
    const QPoint place = view->pos();
    EXPECT_EQ(place, clickAndShowOthers());
    const QPoint dragged = place + QPoint(-200, -100);
    Drag(At(view, {75, 25}), {-200, -100});
    EXPECT_TRUE(view->pos() == dragged && window->isActiveWindow() && isOnTop());
    EXPECT_EQ(dragged, clickAndShowOthers());
    behind.activateWindow();
    EXPECT_TRUE(shows("#00ff00#00ff00")); // it lies behind the window that is active now
    EXPECT_FALSE(isOnTop());
    window->activateWindow();
    EXPECT_TRUE(shows("#80007f#0000ff") && isOnTop());
    Hand(QStringLiteral("mousemove %1 click 1").arg(Centre("cmdMin")));
    EXPECT_TRUE(QTest::qWaitFor([view] { return !view->isVisible(); }));
    window->showNormal();
    EXPECT_TRUE(shows("#80007f#0000ff") && view->pos() == dragged);
    window->ShowPage(8);
    Hand(QStringLiteral("mousemove %1 click 1").arg(At(Find("chkViewOnTop"), {12, 12})));
    EXPECT_FALSE(isOnTop());
}

TEST_F(X11, WithoutANotificationAreaTheTrayButtonMinimises)
{
    OpenInFront();
    Hand(QStringLiteral("mousemove %1 click 1").arg(Centre("cmdMinT")));
    EXPECT_TRUE(QTest::qWaitFor([this] { return window->isMinimized(); }));
    window->showNormal();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    Settle();
    Hand(QStringLiteral("mousemove %1 click 1").arg(Centre("cmdClose")));
    EXPECT_TRUE(QTest::qWaitFor([this] { return !window->isVisible(); }));
    EXPECT_EQ(folder.Path(), WrittenSettings().Dir);
}

TEST_F(X11, TheProgramWithoutItsLibrarySaysSoAndEnds)
{
    const TempFolder lonely;
    std::filesystem::copy(QApplication::applicationDirPath().toStdString() + "/workbench",
                          lonely.Native("workbench"));
    QProcess program;
    program.start(QString::fromStdString(lonely.Native("workbench")), {});
    ASSERT_FALSE(OutputOf(QStringLiteral("xdotool"), {QStringLiteral("search"), QStringLiteral("--sync"),
                                                      QStringLiteral("--onlyvisible"),
                                                      QStringLiteral("--name"), QStringLiteral("^Error$")})
                     .isEmpty());
    Settle();
    EXPECT_EQ(QProcess::Running, program.state());
    Hand(QStringLiteral("key Return"));
    EXPECT_TRUE(QTest::qWaitFor([&program] { return program.state() == QProcess::NotRunning; }, Patience));
    EXPECT_EQ(1, program.exitCode());
    EXPECT_EQ(1u, lonely.EntryCount()) << "nothing is written";
}

} // namespace

} // namespace wb
