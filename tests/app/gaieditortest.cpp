#include "anim/gaireader.h"
#include "anim/gaiwriter.h"
#include "app/editortest.h"
#include "widgets/filelistbox.h"

#include <QPlainTextEdit>
#include <QTimer>
#include <gmock/gmock.h>

namespace wb
{

namespace
{

const QString Frames = u"PNG и GI файлы (*.png, *.gi)|*.png;*.gi="_s;

class GaiEditor : public EditorTest
{
protected:
    GaiEditor() : EditorTest(2, u"GAICR"_s, {35, 30, 21, 13, 10, 9, 5, 1}) {}
    void SetUp() override
    {
        folder.AddGi("at.gi", MakeSprite(1), 2, 1);
        folder.AddPng("big.png", MakePicture(2000, 1500, 0xFFFFFFFF));
        folder.MakeFolder("folder.gai");
        EditorTest::SetUp();
    }
    QString Shown() const // a pixel of the sprite
    {
        const QSize size = Find("picGAICR_Picture")->size();
        return PixelAt("picGAICR_Picture", {(size.width() - 37) / 2 + 4, (size.height() - 23) / 2 + 1})
            .name();
    }
};

TEST_F(GaiEditor, OffersShowsAndAsks)
{
    for (const TableRow &row : ReadTable("app/gaieditor.txt", 4)) {
        Do(row.Text(0), row.Text(1));
        EXPECT_EQ(row.Bytes(2), State()) << row.line;
        EXPECT_EQ(row.Text(3), Shown()) << row.line;
    }
    EXPECT_FALSE(window->isVisible());
}

TEST_F(GaiEditor, PansAndPlaysUntilOneFrameIsLeft)
{
    Do(u"cmdGAICR_Add"_s, Frames + u"=@\\big.png|@\\0.png|@\\1.png"_s);
    QWidget *picture = Find("picGAICR_Picture");
    auto *slider = Find<QSlider>("sldGAICR_Slider");
    QTest::mousePress(picture, Qt::LeftButton, {}, {200, 200});
    for (const int frame : {1, 0}) { // another one may be played meanwhile
        slider->setValue(frame);
        EXPECT_EQ(Qt::BitmapCursor, picture->cursor().shape());
    }
    QTest::mouseMove(picture, {170, 195});
    QTest::mouseRelease(picture, Qt::LeftButton);
    EXPECT_EQ(QPoint(-30, -5), picture->pos());
    auto *list = Find<ListBox>("lstGAICR_List");
    auto *timer = Find<QTimer>("tmrGAICR_Anim");
    Click("cmdGAICR_Play");
    for (const int frame : {1, 2, 0, 1})
        EXPECT_TRUE(QTest::qWaitFor([&] { return slider->value() == frame; }, 500)) << frame;
    for (const bool isPlaying : {true, false}) {
        EXPECT_FALSE(slider->isEnabled());
        QTest::sendKeyEvent(QTest::Click, list, Qt::Key_Delete, u"\x7f"_s, Qt::NoModifier);
        EXPECT_EQ(isPlaying, timer->isActive());
    }
    timer->start(); // as if frames could go in another way
    EXPECT_TRUE(QTest::qWaitFor([&] { return !timer->isActive(); }));
}

TEST_F(GaiEditor, TakesFramesOfTheViewer)
{
    View(u"C:\\a.pkg\\boom.hai"_s, {MakePicture(4, 3, ~0U), MakePicture(5, 3, ~0U), MakePicture(6, 3, ~0U)});
    Find<QSlider>("sldFrame")->setValue(1);
    Click("cmdCopyGAICR");
    window->ShowPage(0);
    List()->setFocus();
    Key('b');
    EXPECT_TRUE(Find("picPage(2)")->isVisible());
    EXPECT_THAT(State(),
                testing::EndsWith(" 0 0 5 3 0 0 50 >boom_001 boom_000 boom_001 boom_002 Кадры: 1 / 4 5 x 3"));
    const auto handOverMeanwhile = [&](const std::string &shown) {
        QTimer::singleShot(0, [this, shown] {
            for (int i = 0; i < 2; ++i) {
                window->ShowPage(0);
                Click("cmdCopyGAICR");
            }
            EXPECT_THAT(State(), testing::EndsWith(shown));
        });
    };
    handOverMeanwhile("Создание GI-фреймов: 1 / 4");
    const QString errors = u"GAI проект содержит ошибки. Продолжить?=Ошибки=yes&"_s,
                  target = u"GAI файлы (*.gai)|*.gai=%1=@\\out.gai"_s,
                  question = u"Файл out.gai был изменен. Сохранить изменения?=Вопрос="_s;
    Do(u"cmdGAICR_SaveGAI"_s, errors + target.arg(QString()));
    EXPECT_THAT(State(), testing::EndsWith(" boom_002 boom_001 boom_001 Кадры: 1 / 6 5 x 3"));
    // What comes while the old frames are saved does not go with them.
    const QString yes = question + u"yes&"_s, again = target.arg(u"@\\out.gai"_s);
    handOverMeanwhile("Создание GI-фреймов: 1 / 6");
    Do(u"cmdGAICR_Clean"_s, yes + errors + again);
    EXPECT_THAT(State(), testing::EndsWith(" >boom_001 boom_001 Кадры: 1 / 2 5 x 3"));
}

TEST_F(GaiEditor, ReadsManyFramesAndEditsNegativeNumbers)
{
    FrameBuf frame = MakePicture(1, 1, 0);
    frame.TransType = 1;
    folder.Put("many.gai", TextOf(WriteGai({-12, 0, 1, 1}, std::vector(5000, frame), {})));
    int turns = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] { ++turns; });
    timer.start(0);
    Do(u"cmdGAICR_OpenGAI"_s, u"GAI файлы (*.gai)|*.gai==@\\many.gai"_s);
    EXPECT_TRUE(turns > 1 && turns < 500) << turns;
    EXPECT_EQ(u"Кадры: 1 / 5000"_s, Text("lblGAICR_Frames"));
    auto *list = Find<ListBox>("lstGAICR_List");
    list->SetListIndex(4000);
    list->SetTopIndex(3995);
    Click("cmdGAICR_MoveFrame(1)");
    EXPECT_EQ(3995, list->TopIndex());
    auto *box = Find<QLineEdit>("txtGAICR_StartX");
    box->setCursorPosition(3);
    for (const auto &[keys, text] : {std::pair("\b", "-1"), {"7", "-17"}, {"-", "-17"}, {"000", "-17000"}}) {
        QTest::keyClicks(box, QLatin1String(keys));
        EXPECT_EQ(QLatin1String(text), box->text());
    }
    Click("cmdGAICR_StartX(0)");
    EXPECT_EQ(u"-16999"_s, box->text());
    Do(u"txtGAICR_StartX 5"_s); // in place of all
    EXPECT_EQ(u"5"_s, box->text());
}

TEST_F(GaiEditor, AsksAboutClosingAfterItsOwnBoxes)
{
    Do(u"drop 1.png"_s);
    QTimer::singleShot(0, [&] { QTimer::singleShot(0, [&] { Click("cmdClose"); }); });
    dialogs.behindBox = [&] {
        QTest::qWait(20);
        EXPECT_EQ(1U, dialogs.answers.size());
    };
    Do(u"drop noise.gi 2.png"_s, u"Некоторые файлы не были добавлены, т.к. они не принадлежат к формату PNG "
                                 "или GI.=Информация=&Новый файл был изменен. Сохранить "
                                 "изменения?=Вопрос=no"_s);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !window->isVisible(); }));
}

TEST_F(GaiEditor, SavesAndClosesWhateverIsPressedMeanwhile)
{
    Do(u"cmdGAICR_Add"_s, Frames + u"=@\\1.png|@\\2.png"_s);
    Do(u"chkGAICR_Packed"_s);
    Do(u"cmdGAICR_Compile"_s);
    const auto *log = Find<QPlainTextEdit>("txtLog");
    EXPECT_TRUE(log->isVisible() && log->toPlainText() == u"Количество ошибок: 0"_s);
    std::string busy;
    QTimer::singleShot(0, [&] {
        busy = State();
        for (const char *button : {"cmdGAICR_Clean", "cmdGAICR_Remove", "cmdClose"})
            Click(button);
    });
    // Closing ends the saving, and asks.
    Do(u"cmdGAICR_SaveGAI"_s, u"GAI файлы (*.gai)|*.gai=@\\=@\\out.gai&Файл out.gai был изменен. Сохранить "
                              "изменения?=Вопрос=yes&GAI файлы (*.gai)|*.gai=@\\out.gai=@\\out.gai"_s);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !window->isVisible(); }));
    EXPECT_EQ("- ---- ---- - -=- -------- --------- -=--- - -0 -0 -37 -23 -0 -0 -50 >1.png 2.png Кадры: 1 / "
              "2 37 x 23 "
              "Создание GI-фреймов: 1 / 2",
              busy);
    EXPECT_FALSE(log->isVisible());
    GaiContents read;
    EXPECT_EQ(2, ReadGaiProject(BytesOf(folder.Get("out.gai")), read));
    EXPECT_EQ(66U + 32U, folder.Get("out.gai").find("ZL01"));
}

} // namespace

} // namespace wb
