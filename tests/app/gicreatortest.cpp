#include "gfx/graphicslibrary.h"
#include "gfx/pixels.h"
#include "gi/gicreatorpage.h"
#include "gi/giencoder.h"
#include "support/fulldisk.h"
#include "support/table.h"
#include "support/windowtest.h"

#include <QTimer>

namespace wb
{

namespace
{

using namespace Qt::StringLiterals;

const QString GiFilter = u"GI файлы (*.gi)|*.gi"_s;

class GiCreator : public WindowTest
{
protected:
    void SetUp() override
    {
        for (int transClass : {0, 1, 2})
            folder.AddPng("sprite" + std::to_string(transClass) + ".png", MakeSprite(transClass));
        folder.AddGi("type2.gi", MakeSprite(2), 2, 2);
        folder.Put("noise.gi", std::string(999, 'x'));
        settingsFolder.Put("Options.ini", "BackColor2=#00FF00");
        OpenWindow();
        window->ShowPage(1);
    }
    // Opens a file, after a first dialog that is cancelled, or clicks a control and types.
    void Do(const QString &where, const QString &keys = {})
    {
        if (!where.contains(u'.')) {
            QTest::mouseClick(Find(qPrintable(where)), Qt::LeftButton, {}, {24, 12});
            return QTest::keyClicks(Find(qPrintable(where)), keys);
        }
        const bool isGi = where.endsWith(u".gi"_s);
        const QString filter = isGi ? GiFilter : u"PNG файлы (*.png)|*.png"_s;
        dialogs.answers = {{filter, openDir, {}}, {filter, openDir, folder.Path(where)}};
        for (int i = 0; i < 2; ++i)
            Click(isGi ? "cmdGICR_OpenGI" : "cmdGICR_OpenPNG");
        openDir = folder.Path();
    }
    void Save(const QString &title, const QString &name)
    {
        dialogs.answers = {{GiFilter, openDir.isEmpty() ? title : folder.Path(title), folder.Path(name)}};
        Click("cmdGICR_CreateGI");
        openDir = folder.Path();
    }
    std::string State() const
    {
        QString state;
        for (const auto *button : Find("picPage(1)")->findChildren<QAbstractButton *>())
            state += u"-=ox"_s[(button->isEnabled() ? 2 : 0) + (button->isChecked() ? 1 : 0)];
        for (const char *box : {"txtGICR_StartX", "txtGICR_StartY"})
            state += Find(box)->property("text").toString() + u',';
        return state.append(Text("lblGICR_Size") + Text("lblGICR_Info")).remove(u' ').toStdString();
    }
    QString Shown(QPoint pixel) const // of the sprite
    {
        const QSize beside = Find("picGICR_Picture")->size() - QSize(37, 23);
        return PixelAt("picGICR_Picture", pixel + QPoint(beside.width() / 2, beside.height() / 2)).name();
    }
    QString openDir;
};

TEST_F(GiCreator, OffersAndShowsWhatIsLoaded)
{
    for (const TableRow &row : ReadTable("app/gicreator.txt", 4)) {
        Do(row.Text(0), row.Text(1));
        EXPECT_EQ(row.Text(2).remove(u' ').toStdString(), State()) << row.line;
        EXPECT_EQ(row.Text(3), Shown({1, 0}) + u' ' + Shown({4, 1})) << row.line;
    }
}

TEST_F(GiCreator, SavesWhatWasChosenWhateverIsPressedMeanwhile)
{
    for (const QString &step : {u"sprite2.png"_s, u"optGICR_GIType(3)"_s, u"chkGICR_CropNull"_s})
        Do(step);
    std::string busy;
    QTimer::singleShot(0, [&] {
        busy = State();
        for (const char *button : {"cmdGICR_CreateGI", "cmdGICR_Clean", "cmdClose"})
            Click(button);
    });
    Save(u"sprite2"_s, u"out.gi"_s);
    EXPECT_EQ("---=---=-=---=------oo0,0,|37x23СозданиеGI...", busy);
    EXPECT_EQ("=------=-=---=--------0,0,|", State());
    ByteArray expected;
    EncodeGi(expected, MakeSprite(2), 3, 2, true);
    EXPECT_EQ(TextOf(expected), folder.Get("out.gi"));
    EXPECT_TRUE(QTest::qWaitFor([this] { return !window->isVisible(); }));
    EXPECT_EQ(folder.Path(), WrittenSettings().OpenDir);
}

TEST_F(GiCreator, KeepsTheOldFileWhenTheNewOneCannotBeWritten)
{
    folder.MakeFolder("folder.gi");
    folder.Put("old.gi", "old");
    Do(u"type2.gi"_s);
    const std::string state = State();
    for (const QString &name : {u"old.gi"_s, u"folder.gi"_s, u"none\\new.gi"_s}) {
        dialogs.expectedErrors = {{u"File access denied."_s, name.split(u'\\').last()}};
        OnAFullDisk(100, [&] { Save(u"type2"_s, name); });
        EXPECT_EQ(state, State());
    }
    EXPECT_EQ("old", folder.Get("old.gi"));
}

TEST_F(GiCreator, PansAndSavesAPictureOfTheViewer)
{
    const std::int32_t handle = FrameBufToDib(MakePicture(2000, 1500, 0xFFFFFFFF));
    Find<GiCreatorPage>("picPage(1)")->TakePicture(handle, u"C:\\a.pkg\\b.bmp"_s);
    Graphics().VTGF_DIB_Free(handle);
    QWidget *picture = Find("picGICR_Picture");
    QTest::mousePress(picture, Qt::LeftButton, {}, {400, 400});
    QTest::mouseMove(picture, {370, 395});
    QTest::mouseRelease(picture, Qt::LeftButton);
    EXPECT_EQ(QPoint(-30, -5), picture->pos());
    Save(u"b"_s, u"b.gi"_s);
    EXPECT_EQ(96U + 2000U * 1500U * 2U, folder.Get("b.gi").size());
    Do(u"sprite0.png"_s);
    EXPECT_EQ(QPoint(0, 0), picture->pos());
}

} // namespace

} // namespace wb
