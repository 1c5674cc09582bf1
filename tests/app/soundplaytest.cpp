#include "support/madepkg.h"
#include "support/madesound.h"
#include "support/windowtest.h"
#include "widgets/listbox.h"

namespace wb
{

namespace
{

class SoundPlay : public WindowTest
{
protected:
    void SetUp() override
    {
        folder.Put("long.wav", MakeSound(WavFormat, 44100, 2, std::vector<std::int16_t>(3 * 88200, 16384)));
        folder.Put("short.mp3", MakeTone(Mp3Format, 22050, 1, 0.2));
        folder.Put("a.pkg",
                   MakePkg({{}, {{u"inner.wav"_qs, folder.Get("long.wav"), true}, {u"void.wav"_qs, ""}}}));
        folder.AddSprites();
    }

    void Open(const QString &name, bool autoPlay)
    {
        Settings settings = DefaultSettings();
        settings.AutoPlaySound = autoPlay;
        WriteSettings(settings);
        OpenWindow(name);
    }
    bool ShowsPlaying() const { return Find("cmdPlay")->toolTip() != u"Воспроизвести (пробел)"_qs; }
    bool Stops() const
    {
        return QTest::qWaitFor([this] { return !ShowsPlaying(); }, 20'000);
    }
};

} // namespace

TEST_F(SoundPlay, EndsByItselfAndBeginsAnew)
{
    const DiskOutput output(false);
    Open(u"short.mp3"_qs, false);
    EXPECT_EQ(u"Тип: MP3  |  Частота: 22050 Hz"_qs, Text("lblInfo"));
    EXPECT_EQ(u"|||"_qs, Text("lblFrames") + Text("lblZoom") + Text("lblSize"));
    EXPECT_FALSE(ShowsPlaying());
    for (int time = 0; time < 2; ++time) {
        Click("cmdPlay");
        EXPECT_TRUE(ShowsPlaying());
        for (const char *name : {"sldFrame", "cmdZoomIn", "cmdSavePNG", "cmdSaveAllPNG", "cmdAlphaView"})
            EXPECT_FALSE(Find(name)->isEnabled()) << name;
        EXPECT_TRUE(Stops());
    }
    CloseWindow();
    const auto isHeard = [](float sample) { return sample != 0; };
    EXPECT_NEAR(2 * 2 * 8820, double(std::ranges::count_if(output.Heard(), isHeard)), 400);
}

TEST_F(SoundPlay, FollowsTheSliderAndStopsAtOnce)
{
    const DiskOutput output(true);
    Open(u"long.wav"_qs, true);
    EXPECT_EQ(u"Тип: WAV  |  Частота: 44100 Hz"_qs, Text("lblInfo"));
    EXPECT_TRUE(ShowsPlaying());
    QTest::qWait(200);
    window->ShowPage(8);
    Find<QSlider>("sldVolume")->setValue(50);
    QTest::qWait(200);
    window->ShowPage(0);
    EXPECT_TRUE(ShowsPlaying());
    Key(' ');
    EXPECT_FALSE(ShowsPlaying());
    CloseWindow();
    // Full, then half, and nothing else between.
    std::vector<float> heard = output.Heard();
    EXPECT_LT(heard.size(), 3 * 88200U);
    heard.erase(std::unique(heard.begin(), heard.end()), heard.end());
    EXPECT_EQ((std::vector{0.5F, 0.25F}), heard);
}

TEST_F(SoundPlay, EndsWithItsDocumentAndComesFromArchives)
{
    const DiskOutput output(true);
    Open(u"long.wav"_qs, true);
    for (const QString &next : {u"0.png"_qs, u"noise.gi"_qs}) {
        EXPECT_TRUE(ShowsPlaying());
        ClickRow(next);
        EXPECT_FALSE(ShowsPlaying() || Find("cmdPlay")->isEnabled()) << next.toStdString();
        ClickRow(u"long.wav"_qs);
    }
    Drop({"a.pkg"});
    ClickRow(Find<ListBox>("lstPKG"), 1);
    EXPECT_EQ(u"Тип: WAV  |  Частота: 44100 Hz"_qs, Text("lblInfo"));
    EXPECT_TRUE(ShowsPlaying());
    ClickRow(Find<ListBox>("lstPKG"), 2);
    EXPECT_EQ(QString(), Text("lblInfo"));
    EXPECT_FALSE(ShowsPlaying() || Find("cmdPlay")->isEnabled());
    ClickRow(Find<ListBox>("lstPKG"), 1);
    CloseWindow(); // amid the sound
}

TEST_F(SoundPlay, ReturnsToStoppedWithoutADevice)
{
    ::setenv("SDL_AUDIODRIVER", "none", 1);
    Open(u"long.wav"_qs, true);
    EXPECT_TRUE(Stops());
    EXPECT_TRUE(Find("cmdPlay")->isEnabled());
}

} // namespace wb
