#include "viewer/viewerpage.h"
#include "gfx/pixels.h"
#include "support/fulldisk.h"
#include "support/table.h"
#include "support/windowtest.h"
#include "viewer/display.h"
#include "viewer/documentloader.h"
#include "widgets/filelistbox.h"
#include "widgets/listicons.h"

#include <QDir>
#include <QDropEvent>
#include <QFile>
#include <QLineEdit>
#include <QMimeData>
#include <QSignalSpy>
#include <QUrl>

#include <filesystem>

namespace wb
{

namespace
{

constexpr std::uint32_t Red = 0xFFFF0000;
constexpr std::uint32_t Green = 0xFF00FF00;

class Viewer : public WindowTest
{
protected:
    void SetUp() override
    {
        folder.AddGi("a.gi", MakePicture(64, 48, Red), 0, 0);
        folder.AddGi("wide.gi", MakePicture(3000, 40, Green), 0, 0);
        folder.AddPng("Планета.png", MakePicture(10, 10, [](int x, int) { return x < 5 ? 0x80FF0000 : 0u; }));
        folder.Put("broken.gi", "");
        folder.MakeFolder("inner");
        Settings settings = DefaultSettings();
        settings.OpenDir = folder.Path(QStringLiteral("inner"));
        settings.JPEGQuality = 40;
        WriteSettings(settings);
    }

    // Whether a drag of that kind is welcome.
    bool Takes(const QUrl &url, Qt::DropActions actions) const
    {
        QMimeData data;
        data.setUrls({url});
        QDragEnterEvent enter({5, 5}, actions, &data, Qt::LeftButton, Qt::NoModifier);
        enter.ignore();
        QCoreApplication::sendEvent(Find("picPictureBorder"), &enter);
        return enter.isAccepted();
    }

    // A document of so many frames, each of a colour of its own.
    void ShowFrames(int count, const QString &path) const
    {
        FrameSet document;
        for (; document.Count < count; ++document.Count)
            document.Pictures.push_back(
                FrameBufToDib(MakePicture(4, 3, 0xFF000000U | (document.Count % 256))));
        window->findChild<Display *>()->Open(path, [&] { return std::move(document); });
    }
    // A PNG's first pixel; a JPEG's first quantizer, 10 at quality 68; anything else as it is.
    QString Held(const std::string &name) const
    {
        const std::string bytes = folder.Get(name);
        const FrameSet document = OpenDocumentBuffer(ArrayOf(bytes));
        return document.Kind == "PNG"   ? QString::number(DibToFrameBuf(document.Pictures[0]).Pixels[0])
               : document.Kind == "JPG" ? QString::number(bytes.at(25))
                                        : QString::fromStdString(bytes);
    }
    // The dialog that a key brings up proposes a name in the folder "inner" and gives another one, or none.
    void AnswerSaving(std::string_view key, const QString &proposed, const QString &given)
    {
        const char *filter = key == "j" ? "JPG файлы (*.jpg)|*.jpg;*.jpe;*.jpeg" : "PNG файлы (*.png)|*.png";
        const QString inner = folder.Path(QStringLiteral("inner\\"));
        dialogs.answers = {
            {QString::fromUtf8(filter), inner + proposed, given.isEmpty() ? given : inner + given}};
    }
    void PressKeys(std::string_view keys) const
    {
        List()->setFocus();
        for (const char key : keys)
            Key(key);
    }

    // Changes the folder and waits for the list to notice.
    void RefreshAfter(const std::function<void()> &change) const
    {
        QSignalSpy refreshed(List(), &FileListBox::RowsRefreshed);
        change();
        List()->Refresh();
        EXPECT_TRUE(refreshed.wait());
    }

    // The colour in the middle of the picture area.
    QColor Middle() const { return PixelAt("picPictureBorder", Find("picPictureBorder")->rect().center()); }
};

TEST_F(Viewer, ASelectedFileIsShownWithItsTexts)
{
    OpenWindow();
    EXPECT_EQ(QStringLiteral(" Объектов: 5"), Text("lblFiles"));
    EXPECT_EQ(QStringLiteral("|"), Text("lblSize"));
    ClickRow(QStringLiteral("a.gi"));
    EXPECT_EQ(QColor(0xFF, 0, 0), Middle());
    EXPECT_EQ(QStringLiteral("Тип: GI  |  Тип фрейма: 0"), Text("lblInfo"));
    EXPECT_EQ(QStringLiteral("|  Кадр: 1"), Text("lblFrames"));
    EXPECT_EQ(QStringLiteral("|  100%"), Text("lblZoom"));
    EXPECT_EQ(QStringLiteral("|  64 x 48"), Text("lblSize"));
    EXPECT_EQ(QStringLiteral(" Объектов: 5  |  Размер: 6 Кб"), Text("lblFiles"));
    EXPECT_FALSE(Find("cmdPlay")->isEnabled());
    EXPECT_FALSE(Find("cmdAbort")->isEnabled());

    ClickRow(QStringLiteral("broken.gi"));
    EXPECT_EQ(QString(), Text("lblInfo"));
    EXPECT_EQ(QStringLiteral("|"), Text("lblZoom"));
    EXPECT_FALSE(Find("cmdZoomIn")->isEnabled());
    EXPECT_NE(QColor(0xFF, 0, 0), Middle());
}

TEST_F(Viewer, TransparentPixelsShowTheSecondBackground)
{
    OpenWindow(QStringLiteral("планета.PNG")); // names are found in any case
    ASSERT_EQ(QStringLiteral("Тип: PNG"), Text("lblInfo"));
    const QPoint centre = Find("picPictureBorder")->rect().center();
    const QPoint left = centre - QPoint(3, 0);
    const QPoint right = centre + QPoint(3, 0);
    EXPECT_EQ(QColor(0x80, 0, 0), PixelAt("picPictureBorder", left));
    EXPECT_EQ(QColor(0, 0, 0), PixelAt("picPictureBorder", right));

    window->ShowPage(8);
    dialogs.colours = {0xFF0000, 0x00FF00}; // blue, then green
    Click("picBackColor2");
    Click("picBackColor1");
    window->ShowPage(0);
    EXPECT_EQ(QColor(0, 0, 0xFF), PixelAt("picPictureBorder", right));
    EXPECT_EQ(QColor(0x80, 0, 0x7F), PixelAt("picPictureBorder", left));
    EXPECT_EQ(QColor(0, 0xFF, 0), PixelAt("picPictureBorder", centre + QPoint(20, 0)));
}

TEST_F(Viewer, ZoomGoesThroughItsLevels)
{
    OpenWindow(QStringLiteral("a.gi"));
    for (const char *zoom : {"50", "25", "12"}) {
        Key('-');
        EXPECT_EQ(QStringLiteral("|  %1%").arg(QLatin1String(zoom)), Text("lblZoom"));
    }
    EXPECT_FALSE(Find("cmdZoomOut")->isEnabled());
    for (int step = 0; step < 20; ++step)
        Key(step % 2 ? '=' : '+');
    EXPECT_EQ(QStringLiteral("|  1000%"), Text("lblZoom"));
    EXPECT_FALSE(Find("cmdZoomIn")->isEnabled());
    EXPECT_EQ(QSize(640, 480).expandedTo(Find("picPicture")->size()), Find("picPicture")->size());
    Click("cmdZoomOut");
    EXPECT_EQ(QStringLiteral("|  900%"), Text("lblZoom"));
}

TEST_F(Viewer, ShrinkToFitStartsAtTheFittingZoom)
{
    Settings settings = DefaultSettings();
    settings.DrawStretch = true;
    WriteSettings(settings);
    OpenWindow(QStringLiteral("wide.gi"));
    const int inner = Find("picPictureBorder")->contentsRect().width();
    EXPECT_EQ(QStringLiteral("|  %1%").arg(inner * 100 / 3000), Text("lblZoom"));
    ClickRow(QStringLiteral("a.gi"));
    EXPECT_EQ(QStringLiteral("|  100%"), Text("lblZoom"));
}

TEST_F(Viewer, ALargePictureIsDraggedUntilItsEdgesMeetTheFrame)
{
    OpenWindow(QStringLiteral("wide.gi"));
    QWidget *picture = Find("picPicture");
    const int inner = Find("picPictureBorder")->contentsRect().width();
    const auto drag = [picture](QPoint by) {
        QTest::mousePress(picture, Qt::LeftButton, {}, QPoint(500, 10));
        QTest::mouseMove(picture, QPoint(500, 10) + by);
        QTest::mouseRelease(picture, Qt::LeftButton, {}, QPoint(500, 10));
    };
    const auto hand = [picture] { return picture->cursor().pixmap().cacheKey(); };
    const auto open = hand();
    QTest::mousePress(picture, Qt::LeftButton);
    EXPECT_NE(open, hand());
    QTest::mouseRelease(picture, Qt::LeftButton);
    EXPECT_EQ(open, hand());
    drag({-100, -50});
    EXPECT_EQ(QPoint(-100, 0), picture->pos());
    drag({300, 0});
    EXPECT_EQ(QPoint(0, 0), picture->pos());
    picture->move(inner - 3000 + 10, 0);
    drag({-200, 0});
    EXPECT_EQ(QPoint(inner - 3000, 0), picture->pos());
    EXPECT_TRUE(List()->hasFocus());
    ClickRow(QStringLiteral("a.gi"));
    EXPECT_EQ(Qt::ArrowCursor, picture->cursor().shape());
}

TEST_F(Viewer, KeysWalkTheListAndTheFolders)
{
    OpenWindow();
    Key(Qt::Key_Home);
    EXPECT_EQ(QStringLiteral(".."), List()->SelectedName());
    Key(Qt::Key_Down);
    EXPECT_EQ(QStringLiteral("inner"), List()->SelectedName());
    Key(Qt::Key_Return);
    EXPECT_EQ(folder.Path(QStringLiteral("inner")), List()->Path());
    EXPECT_EQ(folder.Path(QStringLiteral("inner")), Find<QLineEdit>("txtPath")->text());
    Key(Qt::Key_Return); // ".." leads back and keeps the folder just left selected
    EXPECT_EQ(folder.Path(), List()->Path());
    EXPECT_EQ(QStringLiteral("inner"), List()->SelectedName());
    Key(Qt::Key_End);
    EXPECT_EQ(List()->ListCount() - 1, List()->ListIndex());
    Key('\\');
    EXPECT_EQ(QStringLiteral("C:\\"), List()->Path());
    Click("cmdSub");
    EXPECT_EQ(QString(), List()->Path());
    EXPECT_EQ(QStringLiteral("C:\\"), List()->SelectedName());
}

TEST_F(Viewer, NumberKeysSwitchTheLists)
{
    OpenWindow(QStringLiteral("a.gi"));
    Key('2');
    EXPECT_TRUE(Find("lstPKG")->isVisible());
    EXPECT_FALSE(List()->isVisible());
    Key('3');
    EXPECT_TRUE(Find("lstDAT")->isVisible());
    Key('-'); // pictures are not driven from the records
    EXPECT_EQ(QStringLiteral("|  100%"), Text("lblZoom"));
    Key('1');
    EXPECT_TRUE(List()->isVisible());
    EXPECT_EQ(QStringLiteral("Тип: GI  |  Тип фрейма: 0"), Text("lblInfo"));
    QTest::mouseDClick(Find("cmdFileView(2)"), Qt::LeftButton);
    EXPECT_TRUE(Find("picPage(5)")->isVisible());
}

TEST_F(Viewer, ATypedPathIsGoneTo)
{
    OpenWindow();
    auto *box = Find<QLineEdit>("txtPath");
    box->setText(folder.NativeText("inner")); // as pasted from elsewhere
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_EQ(folder.Path(QStringLiteral("inner")), List()->Path());
    EXPECT_TRUE(List()->hasFocus());
    box->setText(folder.Path(QStringLiteral("inner\\not\\there")));
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_EQ(folder.Path(QStringLiteral("inner")), List()->Path());
}

TEST_F(Viewer, TheFirstDroppedFileIsOpenedAndNeverMoved)
{
    OpenWindow(QStringLiteral("wide.gi"));
    Drop({"a.gi", "wide.gi"});
    EXPECT_EQ(QStringLiteral("|  64 x 48"), Text("lblSize"));
    ClickRow(QStringLiteral("wide.gi")); // was selected before the drop
    EXPECT_EQ(QStringLiteral("|  3000 x 40"), Text("lblSize"));

    EXPECT_FALSE(Takes(QUrl(QStringLiteral("https://example.org/a.gi")), Qt::CopyAction));
    EXPECT_FALSE(Takes(QUrl::fromLocalFile(folder.NativeText("a.gi")), Qt::MoveAction));
}

TEST_F(Viewer, ARefreshChangesOnlyWhatTheFolderChanged)
{
    for (int i = 0; i < 60; ++i)
        folder.MakeFolder(std::to_string(100 + i));
    OpenWindow(QStringLiteral("a.gi"));
    Drop({"wide.gi"}); // shown, though not selected
    ClickRow(QStringLiteral("Планета.png"));
    Drop({"wide.gi"});
    List()->SetListIndex(List()->FindName(QStringLiteral("inner"), 0));
    List()->SetTopIndex(30);
    RefreshAfter([this] { folder.AddGi("0.gi", MakePicture(8, 8, Green), 0, 0); });
    EXPECT_EQ(QStringLiteral("inner"), List()->SelectedName());
    EXPECT_EQ(30, List()->TopIndex());
    EXPECT_EQ(QStringLiteral("|  3000 x 40"), Text("lblSize"));
    EXPECT_EQ(QStringLiteral(" Объектов: 66"), Text("lblFiles"));

    Key('2');
    RefreshAfter([this] { ASSERT_TRUE(QFile::remove(folder.NativeText("0.gi"))); });
    EXPECT_EQ(QString(), Find<QLineEdit>("txtPath")->text());
    EXPECT_EQ(QStringLiteral(" Объектов: 0"), Text("lblFiles"));
    Key('1');
    RefreshAfter([this] { std::filesystem::remove(folder.Native("inner")); });
    EXPECT_EQ(QStringLiteral(".."), List()->SelectedName());
}

TEST_F(Viewer, TheSelectedRowStaysHighlighted)
{
    OpenWindow(QStringLiteral("a.gi"));
    const int row = List()->ListIndex();
    QTest::mouseClick(List()->viewport(), Qt::LeftButton, {},
                      List()->viewport()->rect().bottomLeft() - QPoint(-9, 9));
    QTest::mouseClick(List()->viewport(), Qt::LeftButton, Qt::ControlModifier,
                      List()->visualRect(List()->currentIndex()).center());
    EXPECT_EQ(row, List()->ListIndex());
    EXPECT_TRUE(List()->selectionModel()->isRowSelected(row));
}

TEST_F(Viewer, PageKeysMoveByTheRowsInView)
{
    for (int i = 0; i < 60; ++i)
        folder.MakeFolder(std::to_string(100 + i));
    OpenWindow();
    Key(Qt::Key_Home);
    Key(Qt::Key_PageDown);
    EXPECT_EQ(List()->WholeRowsInView() - 1, List()->ListIndex());
    EXPECT_GT(List()->ListIndex(), 10);
    Key(Qt::Key_PageUp);
    EXPECT_EQ(0, List()->ListIndex());
}

TEST_F(Viewer, TabGoesAlongTheScreenAndNavigationGivesTheFocusBack)
{
    OpenWindow(QStringLiteral("a.gi"));
    Find("cmdRoot")->setFocus(Qt::TabFocusReason);
    QStringList order;
    for (int i = 0; i < 10; ++i) {
        Key(Qt::Key_Tab);
        order << window->focusWidget()->objectName();
    }
    EXPECT_EQ(QStringLiteral("cmdSub txtPath lstFiles cmdCopyGICR cmdCopyGAICR cmdCopyHAICR cmdCopyAnimCR "
                             "cmdSavePNG cmdSaveJPG cmdAlphaView"),
              order.join(u' '));
    Find("txtPath")->setFocus();
    QCoreApplication::processEvents();
    EXPECT_EQ(folder.Path(), Find<QLineEdit>("txtPath")->selectedText());
    Click("cmdRoot");
    EXPECT_TRUE(List()->hasFocus());
}

TEST(ListIcons, EachPatternHasThePictureOfItsKind)
{
    const std::vector<QIcon> pictures = FolderListPictures(LoadListIcons());
    const QStringList names = QStringLiteral("DRIVE_T2 DRIVE_T3 DRIVE_T4 DRIVE_T5 DRIVE_T6 FOLDER FOLDERUP "
                                             "GI GAI HAI AFT PKG BMP JPG JPG JPG PNG PSD WAV WAV TXT DDS")
                                  .split(u' ');
    ASSERT_EQ(names.size(), std::ssize(pictures));
    for (qsizetype i = 0; i < names.size(); ++i)
        EXPECT_EQ(QImage(QStringLiteral(":/icons/%1.png").arg(names[i]))
                      .convertToFormat(QImage::Format_ARGB32_Premultiplied),
                  pictures[std::size_t(i)].pixmap(20).toImage().convertToFormat(
                      QImage::Format_ARGB32_Premultiplied))
            << names[i].toStdString();
}

TEST_F(Viewer, ANameThatIsNotThereOnlyShowsTheFolder)
{
    OpenWindow(QStringLiteral("missing.gi"));
    EXPECT_EQ(folder.Path(), List()->Path());
    EXPECT_EQ(QString(), Text("lblInfo"));
}

TEST_F(Viewer, FramesAreSavedUnderTheNamesChosenOrABoxSaysOnceThatTheyAreNot)
{
    OpenWindow();
    for (const TableRow &row : ReadTable("app/saves.txt", 8)) {
        const bool isFull = row.Bytes(5).starts_with("full");
        folder.MakeFolder(row.Bytes(5) == "b.png" ? "inner/b_002.png" : "inner");
        if (isFull)
            for (const char *name : {"inner/full.jpg", "inner/full.png", "inner/full_000.png"})
                folder.Put(name, "older");
        ShowFrames(row.Int(2), row.Text(1));
        Find<QSlider>("sldFrame")->setValue(row.Int(3));
        dialogs.expectedErrors.resize(std::size_t(row.Int(7)),
                                      {QStringLiteral("File access denied."), ErrorTitle});
        AnswerSaving(row.Bytes(0), row.Text(4), row.Text(5));
        OnAFullDisk(isFull ? 10 : RLIM_INFINITY, [&] { PressKeys(row.Bytes(0)); });
        QStringList held;
        for (const QString &file :
             QDir(folder.NativeText("inner")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot))
            held << file + u'=' + Held("inner/" + file.toStdString());
        EXPECT_EQ(row.Text(6), held.join(u' ')) << row.line;
        EXPECT_TRUE(dialogs.answers.empty() && dialogs.expectedErrors.empty()) << row.line;
        std::filesystem::remove_all(folder.Native("inner"));
    }
}

TEST_F(Viewer, AbortAndCloseEndSavingInTheMiddle)
{
    OpenWindow();
    QString taken;
    QObject::connect(
        Find<ViewerPage>("picPage(0)"), &ViewerPage::GiCreatorWanted,
        [&](std::int32_t handle, const QString &path) { taken += QString::number(handle > 0) + path; });
    PressKeys("sjagvbnm"); // without a document none does anything
    ShowFrames(300, QStringLiteral("C:\\boom.gai"));
    for (const bool closes : {false, true}) {
        QStringList shown;
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, [&] {
            if ((shown << Text("lblStatus")).size() != 3)
                return;
            EXPECT_EQ(folder.Path(QStringLiteral("inner\\Сохранение в PNG: 1 / 300")), shown[0] + shown[1]);
            PressKeys("sajg="); // their buttons are disabled now
            closes ? Click("cmdClose") : Key(Qt::Key_Escape);
            EXPECT_TRUE(window->isVisible()); // the frames are still its own
        });
        timer.start(0);
        AnswerSaving("a", QStringLiteral("boom"), QStringLiteral("x.png"));
        PressKeys("a");
        EXPECT_TRUE(std::filesystem::remove(folder.Native("inner/x_000.png")));
        EXPECT_FALSE(std::filesystem::exists(folder.Native("inner/x_150.png")));
        PressKeys(closes ? "" : "g");
        EXPECT_EQ(!closes, Find("picPage(1)")->isVisible());
        window->ShowPage(0);
    }
    EXPECT_TRUE(QTest::qWaitFor([this] { return !window->isVisible(); }));
    EXPECT_EQ(QStringLiteral("1C:\\boom.gai"), taken);
    EXPECT_EQ(folder.Path(QStringLiteral("inner")), WrittenSettings().OpenDir);
}

TEST_F(Viewer, OfNamesThatDifferInCaseOnlyTheOneThatWasGivenIsOpened)
{
    folder.AddGi("A.gi", MakePicture(8, 8, Red), 0, 0);
    for (const auto &[name, size] : {std::pair("a.gi", "|  64 x 48"), std::pair("A.gi", "|  8 x 8")}) {
        OpenWindow(QLatin1String(name));
        EXPECT_EQ(QLatin1String(size), Text("lblSize"));
    }
}

} // namespace

} // namespace wb
