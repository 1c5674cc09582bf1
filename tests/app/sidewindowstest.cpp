#include "gfx/graphicslibrary.h"
#include "gfx/pixels.h"
#include "platform/desktop/clsalphawnd.h"
#include "support/table.h"
#include "support/windowtest.h"
#include "widgets/frmlog.h"

#include <QPlainTextEdit>
#include <QScreen>

namespace wb
{

namespace
{

using namespace Qt::StringLiterals;

std::vector<std::uint8_t> Numbers(const QString &text)
{
    std::vector<std::uint8_t> bytes;
    for (const QString &number : text.split(u' '))
        bytes.push_back(std::uint8_t(number.toInt()));
    return bytes;
}

TEST(AlphaWindow, MultipliesColoursByAlpha)
{
    for (const TableRow &row : ReadTable("app/premultiplied.txt", 2)) {
        std::vector<std::uint8_t> pixels = Numbers(row.Text(0));
        clsAlphaWnd::PremultiplyAlpha(pixels);
        EXPECT_EQ(Numbers(row.Text(1)), pixels) << row.line;
    }
}

class SideWindows : public WindowTest
{
protected:
    void SetUp() override
    {
        folder.AddPng("a.png", MakePicture(40, 30, [](int, int y) { return y < 10 ? 0x80FF0000 : 0; }));
        folder.AddPng("b.png", MakePicture(500, 400, 0xFF00FF00));
        folder.AddPng("huge.png", MakePicture(16385, 1, 0x80FF0000));
        folder.AddPng("wide.png", MakePicture(2000, 400, 0x80FF0000));
        folder.Put("none.png");
        const std::int32_t opaque = FrameBufToDib(MakePicture(8, 8, 0xFF0000FF));
        const std::int32_t quality = 100;
        Graphics().VTGF_Write_JPEG_File(folder.Native("opaque.jpg").c_str(), opaque, &quality);
        Graphics().VTGF_DIB_Free(opaque);
    }

    QWidget *View() const { return Find("frmView"); }
    QPoint Corner() const
    {
        const QRect screen = window->screen()->geometry();
        return screen.topLeft() + QPoint(screen.width(), screen.height());
    }
    QColor Middle() const { return PixelAt("picPictureBorder", Find("picPictureBorder")->rect().center()); }
};

TEST_F(SideWindows, ThePreviewShowsPicturesWithAlphaWhileItsButtonIsPressed)
{
    OpenWindow(u"a.png"_s);
    EXPECT_FALSE(View()->isVisible());
    Click("cmdAlphaView");
    EXPECT_TRUE(View()->isVisible());
    EXPECT_EQ(QColor(255, 0, 0, 128), View()->grab().toImage().pixelColor(0, 9));
    EXPECT_EQ(QColor(0, 0, 0, 0), View()->grab().toImage().pixelColor(0, 10));
    const std::pair<QString, QRect> cases[] = {{u"opaque.jpg"_s, {}},
                                               {u"b.png"_s, {-500, -400, 500, 400}},
                                               {u"huge.png"_s, {}},
                                               {u"wide.png"_s, {-260, -400, 2000, 400}},
                                               {u"a.png"_s, {-260, -320, 40, 30}}};
    for (const auto &[name, place] : cases) { // counted from the screen's corner
        ClickRow(name);
        EXPECT_NE(u"|"_s, Text("lblSize"));
        EXPECT_EQ(place, View()->isVisible() ? View()->geometry().translated(-Corner()) : QRect())
            << name.toStdString();
    }
    ClickRow(u"none.png"_s);
    EXPECT_FALSE(View()->isVisible() || Find("cmdAlphaView")->isEnabled());
    ClickRow(u"a.png"_s);
    Click("cmdAlphaView");
    EXPECT_FALSE(View()->isVisible());
}

TEST_F(SideWindows, ThePreviewComesAndGoesWithTheMainWindow)
{
    OpenWindow(u"a.png"_s);
    Click("cmdAlphaView");
    window->ShowPage(8);
    EXPECT_TRUE(View()->isVisible());
    Click("cmdMin");
    EXPECT_FALSE(View()->isVisible());
    window->showNormal();
    EXPECT_TRUE(View()->isVisible());
    window->hide();
    EXPECT_FALSE(View()->isVisible());
    window->show();
    EXPECT_TRUE(View()->isVisible());
    Click("cmdClose");
    EXPECT_FALSE(View()->isVisible());
}

TEST_F(SideWindows, FramesCanBeDrawnInThePreviewOnly)
{
    Settings settings = DefaultSettings();
    settings.ViewDrawOnly = true;
    WriteSettings(settings);
    OpenWindow(u"b.png"_s);
    EXPECT_EQ(QColor(0, 255, 0), Middle());
    Click("cmdAlphaView");
    EXPECT_TRUE(View()->isVisible());
    EXPECT_EQ(QColor(235, 233, 237), Middle());
    window->ShowPage(8);
    QTest::mouseClick(Find("chkViewDrawOnly"), Qt::LeftButton, {}, {12, 12});
    window->ShowPage(0);
    EXPECT_EQ(QColor(0, 255, 0), Middle());
}

TEST_F(SideWindows, TheLogGrowsByLines)
{
    OpenWindow();
    auto *log = Find<frmLog>("frmLog");
    auto *text = Find<QPlainTextEdit>("txtLog");
    EXPECT_EQ(Corner() - QPoint(360, 270), log->pos());
    for (int i = 0; i < 3; ++i)
        log->AddLine(QString::number(i) + u"\n-"_s);
    EXPECT_EQ(u"0\n-\n1\n-\n2\n-"_s, text->toPlainText());
    EXPECT_TRUE(text->textCursor().atEnd());
    log->Clean();
    log->AddLine(u"one"_s);
    EXPECT_EQ(u"one"_s, text->toPlainText());
    log->Show();
    CloseWindow();
}

} // namespace

} // namespace wb
