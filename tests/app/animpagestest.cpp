#include "app/editortest.h"
#include "viewer/documentloader.h"
#include "widgets/filelistbox.h"

#include <QAbstractButton>
#include <QTimer>
#include <gmock/gmock.h>

namespace wb
{

namespace
{

class HaiEditor : public EditorTest
{
protected:
    HaiEditor() : EditorTest(3, u"HAICR"_s, {13, 9, 8, 5, 1}) {}
    void SetUp() override
    {
        folder.AddPng("red.png", MakePicture(64, 32, 0xFFFF0000));
        EditorTest::SetUp();
    }
    QString Middle(const char *picture) const
    {
        return PixelAt(picture, Find(picture)->rect().center()).name();
    }
};

TEST_F(HaiEditor, OffersShowsAndAsks)
{
    for (const TableRow &row : ReadTable("app/haieditor.txt", 5)) {
        Do(row.Text(0), row.Text(1));
        EXPECT_EQ(row.Bytes(2), State()) << row.line;
        EXPECT_EQ(row.Text(3), Middle("picHAICR_Picture")) << row.line;
        EXPECT_EQ(row.Text(4), Middle("picHAICR_Picture2")) << row.line;
    }
    EXPECT_FALSE(window->isVisible());
}

// A frame that went to the other list and back is the same to the byte, also after a file.
TEST_F(HaiEditor, KeepsIndexedFramesAsTheyAre)
{
    Do(u"drop 2.png"_s);
    for (const char *button : {"cmdHAICR_Copy", "cmdHAICR_Copy2", "cmdHAICR_CopyAll2"}) {
        Click(button);
        EXPECT_EQ(Find(QByteArray(button).contains('2') ? "lstHAICR_List2" : "lstHAICR_List"),
                  window->focusWidget());
    }
    const QString filter = u"HAI файлы (*.hai)|*.hai="_s;
    Do(u"cmdHAICR_SaveHAI"_s, filter + u"=@\\a.hai"_s);
    Do(u"cmdHAICR_OpenHAI"_s, filter + u"@\\a.hai=@\\a.hai"_s);
    Do(u"cmdHAICR_SaveHAI"_s, filter + u"@\\a.hai=@\\b.hai"_s);
    const std::string file = folder.Get("a.hai");
    EXPECT_EQ(52276U, file.size());
    EXPECT_TRUE(file == folder.Get("b.hai"));
    for (const std::size_t frame : {1, 2})
        EXPECT_TRUE(file.substr(52, 17408) == file.substr(52 + frame * 17408, 17408));
    folder.Put("64.hai", std::string(file).replace(4, 1, "@").replace(8, 1, "@"));
    Do(u"cmdHAICR_OpenHAI"_s, filter + u"@\\b.hai=@\\64.hai"_s);
    Do(u"cmdHAICR_SaveHAI"_s, u"Кадров другого размера, чем 128 x 128: 3. В файле они будут обрезаны или "
                              "дополнены. Продолжить?=Ошибки="_s);
    const FrameSet document = OpenDocumentFile(folder.Path(u"a.hai"_s));
    EXPECT_EQ(128, DibToFrameBuf(document.Pictures.at(2)).Width);
}

// A thousand frames are reduced to 256 colours while closing waits.
TEST_F(HaiEditor, TakesFramesOfTheViewerAndStopsWhenTheWindowCloses)
{
    View(u"C:\\boom.gai"_s, std::vector(1000, MakeSprite(2)));
    Click("cmdCopyHAICR");
    EXPECT_EQ("- oooo ooo - oooo ooo >boom_000 / Кадры: 1 / 1 128 x 128", State());
    window->ShowPage(0);
    QTimer::singleShot(0, [&] {
        EXPECT_THAT(State(), testing::EndsWith("Добавление фреймов: 1 / 1000"));
        EXPECT_THAT(State(), testing::StartsWith("- ---- --- - ---- --- "));
        window->ShowPage(0);
        Click("cmdCopyHAICRAll"); // waits
        Click("cmdClose");
    });
    dialogs.answers.push_back({u"Новый файл был изменен. Сохранить изменения?"_s, u"Вопрос"_s, u"no"_s});
    Click("cmdCopyHAICRAll");
    EXPECT_LT(Find<ListBox>("lstHAICR_List")->ListCount(), 100);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !window->isVisible(); }));
}

TEST_F(HaiEditor, IsSavedWhenTheWindowClosesWhileNothingElseCanBeUsed)
{
    View(u"C:\\boom.gai"_s, {MakeSprite(2)});
    window->ShowPage(3);
    Do(u"drop 1.png 2.png"_s);
    const QString question = u"Новый файл был изменен. Сохранить изменения?=Вопрос="_s;
    Find("cmdHAICR_OpenHAI")->setFocus();
    Do(u"cmdClose"_s, question);
    EXPECT_EQ(Find("cmdHAICR_OpenHAI"), window->focusWidget());
    QTimer::singleShot(0, [&] { // when the first frame is written
        window->ShowPage(0);
        Click("cmdCopyGAICR");
        EXPECT_TRUE(Find("picPage(3)")->isVisible());
        EXPECT_EQ(0, Find<ListBox>("lstGAICR_List")->ListCount());
    });
    Do(u"cmdClose"_s, question + u"yes&HAI файлы (*.hai)|*.hai==@\\a.hai"_s);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(HaiEditor, HasTheFocusAgainWhenClosingIsCancelled)
{
    for (const int page : {3, 0}) { // the one in view
        QWidget *focused = page == 3 ? Find("lstHAICR_List") : List();
        window->ShowPage(3);
        Find("lstHAICR_List")->setFocus();
        QTimer::singleShot(0, [&] {
            QTimer::singleShot(0, [&] {
                window->ShowPage(page);
                focused->setFocus();
                Click("cmdClose");
            });
        });
        Do(u"drop 1.png 2.png"_s, u"Новый файл был изменен. Сохранить изменения?=Вопрос="_s);
        EXPECT_TRUE(QTest::qWaitFor([&] { return dialogs.answers.empty(); }));
        EXPECT_EQ(focused, window->focusWidget());
    }
}

class AnimCreator : public EditorTest
{
protected:
    AnimCreator() : EditorTest(4, u"AnimCR"_s, {9, 5, 1}) {}
    void SetUp() override
    {
        const std::uint32_t colours[] = {0xFFFF0000, 0xFF0000FF, 0xFF00FF00};
        for (const int i : {0, 1, 2}) // a square that moves over a ground
            sources.push_back(MakePicture(64, 48, [&](int x, int y) {
                return x / 16 == i && y / 16 == 1 ? 0xFFFFFFFF : colours[y / 20];
            }));
        for (std::size_t i = 0; i < sources.size(); ++i)
            folder.AddPng("s" + std::to_string(i) + ".png", sources[i]);
        folder.AddPng("hole.png", MakePicture(64, 48, 0));
        folder.Put("old_001.png", "old");
        folder.AddGi("out.GI", sources[0], 0, 0);
        EditorTest::SetUp();
    }
    std::vector<FrameBuf> sources;
};

TEST_F(AnimCreator, OffersShowsAndAsks)
{
    for (const TableRow &row : ReadTable("app/animcreator.txt", 5)) {
        Do(row.Text(0), row.Text(1));
        EXPECT_EQ(row.Bytes(2), State()) << row.line;
        EXPECT_EQ(row.Text(3), Find<QAbstractButton>("cmdAnimCR_Gen")->text()) << row.line;
        EXPECT_EQ(row.Text(4),
                  PixelAt("picAnimCR_Picture", Find("picAnimCR_Picture")->rect().center()).name())
            << row.line;
    }
    for (const char *written : {"fire%1_000.png", "fire%1_001.png", "fire%1_002.png"})
        EXPECT_FALSE(folder.Get(written).empty()) << written;
    EXPECT_EQ("old", folder.Get("old_000.png") + folder.Get("old_001.png"));
    EXPECT_FALSE(window->isVisible());
}

TEST_F(AnimCreator, HasHandedOnOnlyWhatWasTaken)
{
    const QString question = u"Новый файл был изменен. Сохранить изменения?=Вопрос="_s;
    Do(u"drop s0.png s1.png s2.png"_s);
    Click("cmdAnimCR_Gen");
    QTimer::singleShot(0, [&] { Click("cmdClose"); }); // which stops the GAI editor, and that one asks
    Do(u"cmdAnimCR_AddGAI"_s, question + u"no&"_s + question);
    EXPECT_TRUE(QTest::qWaitFor([this] { return dialogs.answers.empty(); }));
    EXPECT_EQ(1, Find<ListBox>("lstGAICR_List")->ListCount());
    window->ShowPage(4);
    Do(u"cmdAnimCR_Clean"_s, question);
    QTimer::singleShot(0, [&] { // others are built meanwhile
        window->ShowPage(4);
        for (const char *what : {"cmdAnimCR_Gen", "drop hole.png", "cmdAnimCR_Gen"})
            Do(QLatin1String(what));
    });
    Do(u"cmdAnimCR_AddGAI"_s);
    EXPECT_EQ(4, Find<ListBox>("lstGAICR_List")->ListCount());
    window->ShowPage(4);
    Do(u"cmdAnimCR_Clean"_s, question);
}

TEST_F(AnimCreator, GivesTheGaiEditorWhatPlaysBackAsThePictures)
{
    View(u"C:\\boom.hai"_s, sources);
    List()->setFocus();
    Key('n');
    EXPECT_EQ("- oooo -o-- - >boom_000 Кадры: 1 / 1 64 x 48", State());
    Click("cmdAnimCR_Remove");
    window->ShowPage(0);
    List()->setFocus();
    Key('m');
    EXPECT_EQ("o oooo oo-- o >boom_000 boom_001 boom_002 Кадры: 1 / 3 64 x 48", State());
    Drop({u"noise.gi"_s}, Find<ListBox>("lstAnimCR_List")->viewport()); // arrives when it builds
    Click("cmdAnimCR_Gen");
    EXPECT_FALSE(Find<ListBox>("lstAnimCR_List")->viewport()->acceptDrops());
    Click("cmdAnimCR_AddGAI");
    EXPECT_TRUE(Find("picPage(2)")->isVisible() && Find<QAbstractButton>("chkGAICR_HaveBg")->isChecked());
    EXPECT_EQ(u"64 48"_s,
              Find<QLineEdit>("txtGAICR_Width")->text() + u' ' + Find<QLineEdit>("txtGAICR_Height")->text());
    EXPECT_EQ(u"Buf_002"_s, Find<ListBox>("lstGAICR_List")->model()->index(2, 0).data().toString());
    Do(u"cmdGAICR_SaveGAI"_s, u"GAI файлы (*.gai)|*.gai==@\\out.gai"_s);
    const FrameSet played = OpenDocumentFile(folder.Path(u"out.gai"_s));
    ASSERT_EQ(3, played.Count);
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_TRUE(sources[i].Pixels == DibToFrameBuf(played.Pictures[i]).Pixels) << i;
    window->ShowPage(0);
    Click("cmdCopyAnimCR"); // to the pictures, which are shown again
    EXPECT_THAT(State(), testing::StartsWith("o oooo oo-- o >boom_000 boom_001 boom_002 boom_000 "));
}

} // namespace

} // namespace wb
