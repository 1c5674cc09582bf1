#include "anim/gaiwriter.h"
#include "support/madepkg.h"
#include "support/windowtest.h"
#include "widgets/filelistbox.h"

namespace wb
{

namespace
{

constexpr int LongCount = 400;

class Animation : public WindowTest
{
protected:
    void SetUp() override
    {
        FrameBuf empty = MakePicture(40, 40, 0);
        empty.GiType = empty.TransType = 1;
        std::vector<FrameBuf> frames(LongCount, empty);
        folder.Put("long.gai", TextOf(WriteGai({0, 0, 40, 40}, frames, {})));
        frames.resize(3);
        frames[0] = MakePicture(40, 40, 0xFF00FF00);
        folder.Put("boom.gai", TextOf(WriteGai({0, 0, 40, 40}, frames, {.Background = true})));
        folder.Put("a.pkg", MakePkg({{}, {{QStringLiteral("boom.gai"), folder.Get("boom.gai"), true}}}));
        folder.AddGi("BOOM.Gi", MakePicture(64, 48, 0xFFFF0000), 0, 0);
        Settings settings = DefaultSettings();
        settings.AltGAIMethod = true;
        WriteSettings(settings);
    }

    // Selects the long animation, and the others when a few of its frames are read; then clicks.
    void SelectWhileLoading(std::initializer_list<const char *> others, const char *button) const
    {
        int turns = 0;
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, [&] {
            if (!Find("cmdAbort")->isEnabled() || ++turns != 5)
                return;
            EXPECT_TRUE(Text("lblStatus").startsWith(QStringLiteral("Чтение фреймов: ")));
            EXPECT_TRUE(IsSelected("long.gai"));
            for (const char *name : others)
                ClickRow(QLatin1String(name));
            EXPECT_EQ(QStringLiteral("|"), Text("lblSize"));
            Click(button);
        });
        timer.start(0);
        ClickRow(QStringLiteral("long.gai"));
        EXPECT_GE(turns, 5);
    }
    bool IsSelected(const char *name) const
    {
        return List()->selectionModel()->isRowSelected(List()->FindName(QLatin1String(name), 0));
    }
    int FramesShown() const { return Find<QSlider>("sldFrame")->maximum() + 1; }
};

TEST_F(Animation, IsShownWithTheBackgroundBesideItAndFromAnArchiveWithout)
{
    OpenWindow(QStringLiteral("boom.gai"));
    EXPECT_EQ(QStringLiteral("|  64 x 48"), Text("lblSize"));
    const QPoint centre = Find("picPictureBorder")->rect().center();
    EXPECT_EQ(QColor(0xFF, 0, 0), PixelAt("picPictureBorder", centre + QPoint(28, 20)));
    Drop({"a.pkg"});
    ClickRow(Find<ListBox>("lstPKG"), 1);
    EXPECT_EQ(QStringLiteral("|  Кадр: 1 / 3|  40 x 40"), Text("lblFrames") + Text("lblSize"));
    Find<QSlider>("sldFrame")->setValue(2);
    QTest::qWait(50);
    EXPECT_EQ(QColor(0, 0xFF, 0), PixelAt("picPictureBorder", centre)) << "piled up, as the settings want it";
}

TEST_F(Animation, FromTheCommandLineIsReadOnceAlsoWhenItIsAborted)
{
    QTimer hand;
    QObject::connect(&hand, &QTimer::timeout, [&] {
        if (!Find("cmdAbort")->isEnabled())
            return;
        Click("cmdAbort");
        hand.stop();
    });
    hand.start(0);
    OpenWindow(QStringLiteral("long.gai"));
    EXPECT_LT(FramesShown(), LongCount);
}

TEST_F(Animation, WhatIsSelectedLastDuringALoadIsOpenedAfterItUnlessTheWindowCloses)
{
    OpenWindow(QStringLiteral("BOOM.Gi"));
    SelectWhileLoading({"boom.gai", "BOOM.Gi"}, "cmdAbort");
    EXPECT_GT(FramesShown(), 2);
    EXPECT_LT(FramesShown(), LongCount);
    EXPECT_TRUE(QTest::qWaitFor([this] { return Text("lblSize") == QStringLiteral("|  64 x 48"); }));
    EXPECT_TRUE(IsSelected("BOOM.Gi"));
    SelectWhileLoading({}, "cmdAbort");
    EXPECT_LT(FramesShown(), LongCount);
    ClickRow(QStringLiteral("long.gai")); // reads it again
    EXPECT_EQ(LongCount, FramesShown());
    ClickRow(QStringLiteral("BOOM.Gi"));
    SelectWhileLoading({"boom.gai", "long.gai"}, "cmdZoomIn"); // which is disabled
    QTest::qWait(50);
    EXPECT_EQ(LongCount, FramesShown());
    ClickRow(QStringLiteral("BOOM.Gi"));
    SelectWhileLoading({"boom.gai"}, "cmdClose");
    EXPECT_TRUE(window->isVisible());
    EXPECT_LT(FramesShown(), LongCount);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !window->isVisible(); }));
    EXPECT_EQ(QStringLiteral("|"), Text("lblSize"));
}

} // namespace

} // namespace wb
