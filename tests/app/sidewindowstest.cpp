#include "gfx/graphicslibrary.h"
#include "gfx/pixels.h"
#include "platform/desktop/clsalphawnd.h"
#include "support/table.h"
#include "support/windowtest.h"
#include "widgets/frmlog.h"

#include <QPlainTextEdit>
#include <QScreen>
#include <gmock/gmock.h>

namespace wb
{

namespace
{

TEST(AlphaWindow, MultipliesColoursByAlpha)
{
    std::vector<std::uint8_t> pixels = {10, 20, 30, 128, 10, 20, 30, 0, 255, 9, 1, 254, 7, 8, 9, 255, 200};
    clsAlphaWnd::PremultiplyAlpha(pixels);
    EXPECT_THAT(pixels, testing::ElementsAre(5, 10, 15, 128, 0, 0, 0, 0, 254, 8, 0, 254, 7, 8, 9, 255, 200));
}

class SideWindows : public WindowTest
{
protected:
    // The place of a side window, from the screen's corner.
    QString PlaceOf(const QWidget *view) const
    {
        const QPoint place = view->pos() - window->screen()->geometry().bottomRight() - QPoint(1, 1);
        const QString text = QStringLiteral("%1 %2 %3 %4").arg(place.x()).arg(place.y());
        return text.arg(view->width()).arg(view->height());
    }

    void Do(const QString &step) const
    {
        if (const QString object = step.section(u' ', 1); step.startsWith(QStringLiteral("row")))
            ClickRow(object);
        else if (!object.isEmpty())
            Find<QAbstractButton>(qPrintable(object))->click();
        else
            QMetaObject::invokeMethod(window.get(), qPrintable(step));
    }
};

TEST_F(SideWindows, ThePreviewIsShownByItsRules)
{
    folder.AddPng("a.png", MakePicture(40, 30, 0x80000000));
    folder.AddPng("b.png", MakePicture(500, 400, 0x80000000));
    folder.AddPng("dot.png", MakePicture(1, 1, 0x80FF0000));
    folder.AddPng("huge.png", MakePicture(16385, 1, 0x80FF0000));
    folder.AddPng("wide.png", MakePicture(2000, 400, 0x80FF0000));
    folder.Put("none.png");
    const std::int32_t opaque = FrameBufToDib(MakePicture(8, 8, 0xFF808080));
    const std::int32_t quality = 100;
    Graphics().VTGF_Write_JPEG_File(folder.Native("opaque.jpg").c_str(), opaque, &quality);
    Graphics().VTGF_DIB_Free(opaque);
    OpenWindow();
    const QWidget *view = Find("frmView");
    for (const TableRow &row : ReadTable("app/preview.txt", 3)) {
        Do(row.Text(0));
        EXPECT_EQ(row.Text(1), view->isVisible() ? PlaceOf(view) : QStringLiteral("-")) << row.line;
        const QPoint middle = Find("picPictureBorder")->rect().center();
        EXPECT_EQ(row.Text(2), PixelAt("picPictureBorder", middle).name()) << row.line;
    }
}

TEST_F(SideWindows, TheLogGrowsByLines)
{
    OpenWindow();
    auto *log = Find<frmLog>("frmLog");
    auto *text = Find<QPlainTextEdit>("txtLog");
    EXPECT_TRUE(PlaceOf(log).startsWith(QStringLiteral("-360 -270 ")));
    log->AddLine(QStringLiteral("0"));
    log->AddLine(QStringLiteral("1\n-"));
    EXPECT_EQ(QStringLiteral("0\n1\n-"), text->toPlainText());
    EXPECT_TRUE(text->textCursor().atEnd());
    log->Clean();
    EXPECT_TRUE(text->toPlainText().isEmpty());
}

} // namespace

} // namespace wb
