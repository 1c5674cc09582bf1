#include "viewer/display.h"
#include "app/statusstrip.h"
#include "gfx/pixels.h"
#include "support/samplefolder.h"
#include "support/scripteddialogs.h"
#include "support/table.h"

#include <QAbstractButton>
#include <QLabel>
#include <QSlider>
#include <QTest>

namespace wb
{

namespace
{

// A document of several frames, each of one colour of its own.
FrameSet ThreeFrames()
{
    FrameSet document;
    document.Kind = "GAI";
    document.InfoText = "2";
    for (const std::uint32_t colour : {0xFFFF0000u, 0xFF00FF00u, 0xFF0000FFu}) {
        document.Pictures.push_back(FrameBufToDib(MakePicture(20, 20, colour)));
        document.FrameTypes.push_back(document.Count++);
    }
    return document;
}

class DisplayTest : public testing::Test
{
protected:
    void SetUp() override
    {
        display.resize(600, 400);
        display.show();
        display.Open(QStringLiteral("C:\\a.gai"), ThreeFrames);
    }

    template <typename Widget = QWidget>
    Widget *Find(const char *name) const
    {
        return display.findChild<Widget *>(QLatin1String(name));
    }
    QString Text(const char *label) const { return Find<QLabel>(label)->text(); }
    QColor Middle() const
    {
        auto *area = Find("picPictureBorder");
        return area->grab().toImage().pixelColor(area->rect().center());
    }

    Settings settings = DefaultSettings();
    ScriptedDialogs dialogs;
    AbortFlag abort;
    frmRes res;
    StatusStrip strip{nullptr};
    Display display{settings, dialogs, strip, abort, res, nullptr};
};

TEST_F(DisplayTest, TellsOfFramesThatMemoryDidNotHold)
{
    dialogs.answers.push_back({QStringLiteral("Памяти хватило не на все кадры. Не прочитано: 2"),
                               QStringLiteral("Информация"), QString()});
    dialogs.behindBox = [this] { EXPECT_TRUE(display.IsBusy()); };
    display.Open(QStringLiteral("C:\\a.gai"), [] {
        FrameSet document = ThreeFrames();
        document.LeftOut = 2;
        return document;
    });
    EXPECT_TRUE(display.IsCutShort() && !display.IsBusy());
}

TEST_F(DisplayTest, TheSliderStepsThroughTheFrames)
{
    auto *slider = Find<QSlider>("sldFrame");
    EXPECT_EQ(2, slider->maximum());
    EXPECT_EQ(QColor(0xFF, 0, 0), Middle());
    QTest::keyClick(slider, Qt::Key_End);
    EXPECT_EQ(QStringLiteral("|  Кадр: 3 / 3"), Text("lblFrames"));
    EXPECT_TRUE(QTest::qWaitFor([this] { return Middle() == QColor(0, 0, 0xFF); }));
    EXPECT_EQ(QStringLiteral("Тип: GAI  |  Тип фрейма: 2"), Text("lblInfo"));
}

TEST_F(DisplayTest, PlaybackLoopsUntilItIsStopped)
{
    auto *slider = Find<QSlider>("sldFrame");
    QTest::mouseClick(Find("cmdPlay"), Qt::LeftButton);
    EXPECT_FALSE(slider->isEnabled());
    EXPECT_TRUE(QTest::qWaitFor([slider] { return slider->value() == 2; }));
    EXPECT_TRUE(QTest::qWaitFor([slider] { return slider->value() == 0; }));
    QTest::mouseClick(Find("cmdPlay"), Qt::LeftButton);
    EXPECT_TRUE(slider->isEnabled());
    const int stopped = slider->value();
    QTest::qWait(120);
    EXPECT_EQ(stopped, slider->value());
}

TEST_F(DisplayTest, AnotherDocumentStopsPlayback)
{
    QTest::mouseClick(Find("cmdPlay"), Qt::LeftButton);
    display.Open(QStringLiteral("C:\\b.png"),
                 [] { return StillPicture("PNG", FrameBufToDib(MakePicture(8, 8, 0xFFFFFFFF))); });
    EXPECT_FALSE(Find("cmdPlay")->isEnabled());
    EXPECT_FALSE(Find("sldFrame")->isEnabled());
    QTest::qWait(120);
    EXPECT_EQ(QStringLiteral("|  Кадр: 1"), Text("lblFrames"));
    EXPECT_EQ(QColor(0xFF, 0xFF, 0xFF), Middle());
}

TEST_F(DisplayTest, AutoPlayStartsAtOnce)
{
    settings.AutoPlayAnim = true;
    display.Open(QStringLiteral("C:\\c.gai"), ThreeFrames);
    EXPECT_TRUE(QTest::qWaitFor([this] { return Find<QSlider>("sldFrame")->value() == 1; }));
}

TEST_F(DisplayTest, APictureTooLargeToZoomSaysSoOnceAndGoesBack)
{
    display.Open(QStringLiteral("C:\\long.gai"), [] {
        FrameSet document = StillPicture("GAI", FrameBufToDib(MakePicture(6'000'000, 1, 0xFFFF0000)));
        document.Pictures.push_back(FrameBufToDib(MakePicture(6'000'000, 1, 0xFF00FF00)));
        document.Count = 2;
        return document;
    });
    QTest::mouseClick(Find("cmdPlay"), Qt::LeftButton);
    dialogs.behindBox = [] { QTest::qWait(120); }; // playback goes on
    QTest::mouseClick(Find("cmdZoomIn"), Qt::LeftButton);
    EXPECT_EQ(QStringLiteral("|  200%"), Text("lblZoom"));
    dialogs.expectedErrors = {
        {QStringLiteral("Can't zoom more, image is to large."), QStringLiteral("Error")}};
    QTest::mouseClick(Find("cmdZoomIn"), Qt::LeftButton);
    EXPECT_EQ(QStringLiteral("|  200%"), Text("lblZoom"));
}

TEST(ExportBar, ItsButtonsFollowTheDocument)
{
    const frmRes res;
    ExportBar bar(res, nullptr);
    FrameSet document;
    for (const TableRow &row : ReadTable("app/exportbuttons.txt", 4)) {
        document.Mode = DocumentMode(row.Int(0));
        document.Count = row.Int(1);
        bar.ShowDocument(document, row.Int(2) != 0);
        std::string states;
        for (const QWidget *button : bar.Buttons())
            states += button->isHidden() ? ' ' : button->isEnabled() ? '+' : '-';
        EXPECT_EQ(row.Bytes(3), QByteArray::fromStdString(states).trimmed().toStdString()) << row.line;
    }
}

} // namespace

} // namespace wb
