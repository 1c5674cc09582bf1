#include "platform/nativepath.h"
#include "support/windowtest.h"
#include "widgets/filelistbox.h"

#include <QDropEvent>
#include <QElapsedTimer>
#include <QFile>
#include <QLineEdit>
#include <QMimeData>
#include <QUrl>

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
    drag({-100, -50});
    EXPECT_EQ(QPoint(-100, 0), picture->pos());
    drag({300, 0});
    EXPECT_EQ(QPoint(0, 0), picture->pos());
    picture->move(inner - 3000 + 10, 0);
    drag({-200, 0});
    EXPECT_EQ(QPoint(inner - 3000, 0), picture->pos());
    EXPECT_TRUE(List()->hasFocus());
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
    QTest::keyClick(Find("lstPKG"), '3');
    EXPECT_TRUE(Find("lstDAT")->isVisible());
    QTest::keyClick(Find("lstDAT"), '-'); // pictures are not driven from the records
    EXPECT_EQ(QStringLiteral("|  100%"), Text("lblZoom"));
    QTest::keyClick(Find("lstDAT"), '1');
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

TEST_F(Viewer, TheFirstDroppedFileIsOpened)
{
    OpenWindow();
    QMimeData files;
    files.setUrls(
        {QUrl::fromLocalFile(folder.NativeText("a.gi")), QUrl::fromLocalFile(folder.NativeText("wide.gi"))});
    QWidget *target = Find("picPage(0)");
    const QPoint position(600, 300);
    QDragEnterEvent enter(position, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(target, &enter);
    ASSERT_TRUE(enter.isAccepted());
    QDropEvent drop(position, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(target, &drop);
    EXPECT_EQ(QStringLiteral("|  64 x 48"), Text("lblSize"));

    QMimeData text;
    text.setText(QStringLiteral("a.gi"));
    QDragEnterEvent refused(position, Qt::CopyAction, &text, Qt::LeftButton, Qt::NoModifier);
    refused.ignore();
    QCoreApplication::sendEvent(target, &refused);
    EXPECT_FALSE(refused.isAccepted());
}

TEST_F(Viewer, ARefreshKeepsSelectionAndPlaceUnlessTheFolderChanged)
{
    OpenWindow(QStringLiteral("a.gi"));
    List()->Refresh();
    QTest::qWait(50);
    EXPECT_EQ(QStringLiteral("a.gi"), List()->SelectedName());
    folder.AddGi("0.gi", MakePicture(8, 8, Green), 0, 0);
    List()->Refresh();
    EXPECT_TRUE(QTest::qWaitFor([this] { return List()->ListCount() == 7; }));
    EXPECT_EQ(QStringLiteral("a.gi"), List()->SelectedName());
    EXPECT_EQ(QStringLiteral("|  64 x 48"), Text("lblSize"));
    ASSERT_TRUE(QFile::remove(folder.NativeText("a.gi")));
    List()->Refresh();
    EXPECT_TRUE(QTest::qWaitFor([this] { return List()->ListCount() == 6; }));
    EXPECT_EQ(QStringLiteral(".."), List()->SelectedName());
}

TEST_F(Viewer, ANameThatIsNotThereOnlyShowsTheFolder)
{
    OpenWindow(QStringLiteral("missing.gi"));
    EXPECT_EQ(folder.Path(), List()->Path());
    EXPECT_EQ(QString(), Text("lblInfo"));
}

} // namespace

} // namespace wb
