#include "app/statusstrip.h"
#include "common/files.h"
#include "support/windowtest.h"
#include "widgets/colourswatch.h"
#include "widgets/desktopdialogs.h"
#include "widgets/elidedlabel.h"
#include "widgets/filelistbox.h"
#include "widgets/gauge.h"

#include <QApplication>
#include <QCheckBox>
#include <QElapsedTimer>
#include <QLineEdit>

namespace wb
{

namespace
{

class MainWindow : public WindowTest
{
protected:
    void Wheel(int delta, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const
    {
        const QPointF position = List()->mapTo(window.get(), QPoint(20, 20));
        QWheelEvent event(position, window->mapToGlobal(position), {}, {0, delta}, Qt::NoButton, modifiers,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(window->windowHandle(), &event);
    }
};

TEST_F(MainWindow, EachButtonShowsItsPage)
{
    OpenWindow();
    const auto find = [this](const char *name, int page) {
        return Find(qPrintable(QString::fromLatin1(name).arg(page)));
    };
    for (int shown = frmMain::PageCount - 1; shown >= 0; --shown) {
        const bool hasLists = shown == 0 || shown == 5;
        Click("cmdPage(0)");
        QTest::mouseClick(find("cmdPage(%1)", shown), Qt::LeftButton);
        for (int page = 0; page < frmMain::PageCount; ++page)
            EXPECT_EQ(page == shown, find("picPage(%1)", page)->isVisible()) << page;
        EXPECT_EQ(hasLists, List()->hasFocus()) << shown;
        EXPECT_EQ(!hasLists, find("picPage(%1)", shown)->isAncestorOf(window->focusWidget())) << shown;
    }
}

TEST_F(MainWindow, ClosesBeforeItsFirstFrame)
{
    window = std::make_unique<frmMain>(dialogs, QString(), registry);
    window->show();
    window->OpenCommandLine({folder.Path(), {}});
    window->close();
    QCoreApplication::processEvents();
    EXPECT_FALSE(window->isVisible());
    EXPECT_FALSE(window->IsFirstFrameShown());
}

TEST_F(MainWindow, KeepsItsSmallestSize)
{
    OpenWindow();
    window->resize(300, 200);
    EXPECT_EQ(QSize(1024, 736), window->size());
}

TEST_F(MainWindow, OptionsReachTheSettingsFile)
{
    OpenWindow();
    window->ShowPage(8);
    for (const char *box :
         {"chkAutoPlayAnim", "chkAutoPlaySound", "chkDrawStretch", "chkViewOnTop", "chkViewDrawOnly",
          "chkAltGAIMethod", "chkPKG", "chkGI", "chkGAI", "chkHAI", "chkAFT"})
        QTest::mouseClick(Find(box), Qt::LeftButton, {}, QPoint(12, Find(box)->height() / 2));
    const QString hai = QStringLiteral("HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes\\.hai");
    EXPECT_EQ(QStringLiteral("HAIFile"), registry.Value(hai));
    Find("sldJPEGQuality")->setFocus();
    QTest::keyClick(Find("sldJPEGQuality"), Qt::Key_Right);
    QTest::keyClick(Find("sldVolume"), Qt::Key_Home);
    EXPECT_EQ(QStringLiteral("0"), Text("lblSoundVolume"));
    EXPECT_EQ(QStringLiteral("1"), Text("lblJPEGQuality"));
    dialogs.colours = {0x0000FF, std::nullopt};
    Click("lblAFTColor");
    Click("lblAFTColor");
    EXPECT_EQ((std::vector<std::int32_t>{0, 0x0000FF}), dialogs.askedColours);

    CloseWindow();
    const Settings written = WrittenSettings();
    EXPECT_TRUE(written.AutoPlayAnim && written.AutoPlaySound && written.DrawStretch && written.ViewOnTop &&
                written.ViewDrawOnly && written.AltGAIMethod && written.AssocPKG && written.AssocGI &&
                written.AssocGAI && written.AssocHAI && written.AssocAFT);
    EXPECT_EQ(1, written.JPEGQuality);
    EXPECT_EQ(0, written.SoundVolume);
    EXPECT_EQ(0x0000FF, written.AFTColor);
    EXPECT_EQ(folder.Path(), written.Dir);

    window.reset();
    registry.DeleteKey(hai);
    OpenWindow();
    EXPECT_TRUE(Find<QCheckBox>("chkHAI")->isChecked());
    EXPECT_EQ(QStringLiteral("HAIFile"), registry.Value(hai)) << "every start brings it in line";
    EXPECT_EQ(QStringLiteral("#FF0000"), Find<ColourSwatch>("lblAFTColor")->text());
}

TEST_F(MainWindow, OneSettingLeavesTheOthersUnchecked)
{
    Settings settings = DefaultSettings();
    settings.AssocGI = true;
    WriteSettings(settings);
    OpenWindow();
    EXPECT_TRUE(Find<QCheckBox>("chkGI")->isChecked());
    EXPECT_FALSE(Find<QCheckBox>("chkGAI")->isChecked());
}

TEST_F(MainWindow, TheWheelMovesTheListThreeRowsANotch)
{
    for (int i = 0; i < 100; ++i)
        folder.MakeFolder(std::to_string(100 + i));
    OpenWindow();
    Wheel(-120);
    EXPECT_EQ(3, List()->TopIndex());
    Wheel(-360);
    EXPECT_EQ(6, List()->TopIndex());
    Wheel(120);
    EXPECT_EQ(3, List()->TopIndex());
    Wheel(-120, Qt::ControlModifier);
    Wheel(-480);
    EXPECT_EQ(3, List()->TopIndex());
    for (int i = 0; i < 8; ++i)
        Wheel(-15); // a touchpad's parts of one notch
    EXPECT_EQ(6, List()->TopIndex());
    for (int i = 0; i < 8; ++i) {
        Wheel(15);
        Wheel(0); // and its sideways ones
    }
    EXPECT_EQ(3, List()->TopIndex());
}

TEST_F(MainWindow, TheTitleBarMaximisesMinimisesAndGivesTheFocusBack)
{
    OpenWindow();
    Find("cmdZoomIn")->setFocus();
    QTest::mouseClick(Find("picCaption"), Qt::LeftButton);
    EXPECT_TRUE(List()->hasFocus());
    QTest::mouseDClick(Find("picCaption"), Qt::LeftButton);
    EXPECT_TRUE(window->isMaximized());
    QTest::mouseDClick(Find("picCaption"), Qt::LeftButton);
    EXPECT_FALSE(window->isMaximized());
    Click("cmdMin");
    EXPECT_TRUE(window->isMinimized());
}

TEST_F(MainWindow, TheMemoryGaugeTellsOfTheMachine)
{
    OpenWindow();
    auto *gauge = Find<Gauge>("prgMem");
    EXPECT_TRUE(QTest::qWaitFor([gauge] { return !gauge->toolTip().isEmpty(); }));
    EXPECT_GT(gauge->Maximum(), gauge->Value());
    EXPECT_GT(gauge->Value(), 0);
}

TEST_F(MainWindow, ManyFastStepsAreShownNowAndThen)
{
    OpenWindow();
    auto *strip = Find<StatusStrip>("picStatus");
    QElapsedTimer timer;
    timer.start();
    strip->ProgressStart(20000, {});
    int shown = 0;
    for (int step = 1; step <= 20000; ++step) {
        strip->ProgressStep(step, QString::number(step));
        shown += Text("lblStatus").toInt() == step;
        ASSERT_GT(shown, 0); // the first
    }
    EXPECT_EQ(20000, Find<Gauge>("prgProgress")->Value());
    EXPECT_LE(shown, 2 + timer.elapsed() / 20);
}

TEST_F(MainWindow, AnUnwritableSettingsFileDoesNotStopStartOrEnd)
{
    settingsFolder.MakeFolder("Options.ini");
    OpenWindow();
    EXPECT_FALSE(Find<QCheckBox>("chkGI")->isChecked());
    CloseWindow();
    EXPECT_TRUE(FolderExists(settingsFolder.Path(QStringLiteral("Options.ini"))));
}

TEST(ElidedLabel, ShowsMarkupAsItIs)
{
    ElidedLabel label({}, nullptr);
    label.setText(QStringLiteral("C:\\a.gi"));
    const int height = label.sizeHint().height();
    label.setText(QStringLiteral("C:\\<h1>a<br>b</h1>.gi"));
    EXPECT_EQ(height, label.sizeHint().height());
}

TEST(DesktopDialogs, AskBeforeACompletedNameReplacesAFile)
{
    const SampleFolder folder;
    folder.Put("x.png");
    QStringList answers = {
        folder.NativeText("x"), {}, folder.NativeText("X.PNG"), {}, folder.NativeText("y")};
    QTimer hand;
    QObject::connect(&hand, &QTimer::timeout, [&] {
        QWidget *box = QApplication::activeModalWidget();
        if (box == nullptr)
            return;
        if (answers.isEmpty()) {
            ADD_FAILURE() << "one box too many";
            box->close();
            return;
        }
        auto *name = box->findChild<QLineEdit *>(); // none in the question
        for (const auto *question : box->findChildren<QLabel *>(QStringLiteral("qt_msgbox_label")))
            EXPECT_EQ(Qt::PlainText, question->textFormat());
        if (const QString answer = answers.takeFirst(); name != nullptr)
            name->setText(answer);
        QTest::keyClick(box, name != nullptr ? Qt::Key_Return : Qt::Key_Escape);
    });
    hand.start(100); // the dialog lists its folder first, and then selects the name proposed
    const QString filter = QStringLiteral("PNG (*.png)|*.png");
    EXPECT_EQ(folder.Path(QStringLiteral("y.png")),
              DesktopDialogs().SaveFile(filter, folder.Path(QStringLiteral("a"))));
}

} // namespace

} // namespace wb
