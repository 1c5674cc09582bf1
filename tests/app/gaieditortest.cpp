#include "anim/gaireader.h"
#include "gfx/pixels.h"
#include "support/fulldisk.h"
#include "support/table.h"
#include "support/windowtest.h"
#include "viewer/display.h"
#include "widgets/listbox.h"

#include <QPlainTextEdit>
#include <QTimer>

namespace wb
{

namespace
{

using namespace Qt::StringLiterals;

const QString GaiFilter = u"GAI файлы (*.gai)|*.gai"_s;
const QString FrameFilter = u"PNG и GI файлы (*.png, *.gi)|*.png;*.gi"_s;

class GaiEditor : public WindowTest
{
protected:
    void SetUp() override
    {
        for (int transClass : {0, 1, 2})
            folder.AddPng(std::to_string(transClass) + ".png", MakeSprite(transClass));
        folder.AddGi("at.gi", MakeSprite(1), 2, 1);
        folder.AddPng("big.png", MakePicture(2000, 1500, 0xFFFFFFFF));
        folder.Put("noise.gi", std::string(999, 'x'));
        settingsFolder.Put("Options.ini", "BackColor2=#00FF00");
        OpenWindow();
        window->ShowPage(2);
    }
    QStringList Paths(const QStringList &names) const
    {
        QStringList paths;
        for (const QString &name : names)
            paths << folder.Path(name);
        return paths;
    }
    void Expect(const QString &asked, const QString &name, const QString &given)
    {
        dialogs.answers.push_back({asked, openDir.isEmpty() ? name : PathIn(openDir, name), given});
    }
    void Add(const QStringList &names)
    {
        dialogs.answers.push_back({FrameFilter, openDir, Paths(names).join(u'|')});
        Click("cmdGAICR_Add");
        openDir = folder.Path();
    }
    void Do(const QString &what)
    {
        const QString where = what.section(u' ', 0, 0);
        const QStringList rest = what.split(u' ').mid(1);
        if (where == u"add"_s)
            Add(rest);
        else if (where == u"drop"_s)
            DropOnList(rest);
        else if (where == u"row"_s)
            ClickRow(Find<ListBox>("lstGAICR_List"), rest[0].toInt());
        else if (where == u"slide"_s)
            Find<QSlider>("sldGAICR_Slider")->setValue(rest[0].toInt());
        else
            QTest::mouseClick(Find(qPrintable(where)), Qt::LeftButton, {}, {12, 12});
        for (qsizetype i = 0; where.startsWith(u"txt"_s) && i < rest.size(); ++i)
            QTest::keyClicks(Find(qPrintable(where)), rest[i]);
    }
