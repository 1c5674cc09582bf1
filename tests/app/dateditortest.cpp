#include "dat/datreader.h"
#include "dat/valuebox.h"
#include "support/madedat.h"
#include "support/table.h"
#include "support/windowtest.h"
#include "widgets/listbox.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTimer>

namespace wb
{

namespace
{

using namespace Qt::StringLiterals;

class DatPage : public WindowTest
{
protected:
    void SetUp() override
    {
        folder.Put("a.dat",
                   TextOf(MadeDat(u"N3 v1:t=0 b1:Item N1 v1:x=1 b2:Item P3 1:y=2\n 3:z=3 2:In=4"_s)));
        folder.Put("bad.dat", "ZL01");
        Settings settings = DefaultSettings();
        settings.OpenDir = folder.Path();
        WriteSettings(settings);
        OpenWindow();
        window->ShowPage(5);
    }
    // Clicks or types. Each answer is "asked=proposed=given", or "text=title" of an error box; "@" stands for
    // the folder, "%" for the filter.
    void Do(const QString &what, QString answers)
    {
        answers.replace(u'@', folder.Path()).replace(u'%', u"DAT файлы (*.dat)|*.dat|Все файлы (*.*)|*.*"_s);
        for (const QString &text : answers.split(u'&', Qt::SkipEmptyParts)) {
            const QStringList answer = text.split(u'=');
            answer.size() == 2 ? dialogs.expectedErrors.push_back({answer[0], answer[1]})
                               : dialogs.answers.push_back({answer[0], answer[1], answer[2]});
        }
        const QString where = what.section(u' ', 0, 0), rest = what.section(u' ', 1);
        auto *list = Find<ListBox>("lstDAT");
        where == u"key"_s    ? QTest::keyClick(list, Qt::Key_Backspace)
        : where == u"type"_s ? QTest::keyClicks(Find("txtText"), rest + u'\r')
        : where == u"row"_s || where == u"open"_s
            ? ClickRow(list, rest.toInt(), where == u"open"_s)
            : QTest::mouseClick(Find(qPrintable(where)), Qt::LeftButton, {}, {12, 12});
        QCoreApplication::processEvents();
    }
    QString State() const
    {
        QString state;
        for (const char *name :
             {"cmdDAT_Open", "cmdDAT_Close", "chkDAT_ZL", "cmdDAT_SaveAs", "cmdDAT_Save"}) {
            const auto *button = Find<QAbstractButton>(name);
            state += button->isChecked() ? u'x' : button->isEnabled() ? u'o' : u'-';
        }
        const auto *text = Find<QPlainTextEdit>("txtText");
        const auto *list = Find<ListBox>("lstDAT");
        state += text->isEnabled() ? u"o "_s : u"- "_s;
        state += Find<QLineEdit>("txtPath")->text().replace(folder.Path(), u"@"_s) + Text("lblFiles");
        for (int i = 0; i < list->ListCount(); ++i)
            state +=
                (i == list->ListIndex() ? u" >"_s : u" "_s) + list->model()->index(i, 0).data().toString();
        return (state + u' ' + text->toPlainText()).simplified();
    }
};

TEST_F(DatPage, OpensWalksChangesSavesAndAsks)
{
    for (const TableRow &row : ReadTable("app/dateditor.txt", 3)) {
        EXPECT_TRUE(window->isVisible());
        Do(row.Text(0), row.Text(1));
        EXPECT_EQ(row.Text(2), State()) << row.line;
    }
    EXPECT_FALSE(window->isVisible());
    const DatTree saved = DatLoadFile(folder.Path(u"a.dat"_s));
    EXPECT_EQ(u"0 72\n"_s, saved.Value(1) + u' ' + saved.Value(5));
}

TEST(ValueBox, KeysAndPastesChangeWhatTheySayAndNothingElse)
{
    ValueBox box(u"txtText"_s, nullptr);
    QString value;
    QObject::connect(&box, &ValueBox::Edited, [&value](const QString &edited) { value = edited; });
    const auto press = [&box](QStringView keys) { // with Ctrl; "-" is Delete
        for (const QChar key : keys)
            key == u'-' ? QTest::keyClick(&box, Qt::Key_Delete)
                        : QTest::keyClick(&box, Qt::Key(key.unicode()), Qt::ControlModifier);
    };
    for (const TableRow &row : ReadTable("app/valuebox.txt", 4)) {
        QGuiApplication::clipboard()->setText(row.Text(1));
        box.SetValue(value = row.Text(0));
        press(row.Text(2));
        EXPECT_EQ(row.Text(3), value) << row.line;
    }
    EXPECT_EQ(u"a\n\u21B5"_s, QGuiApplication::clipboard()->text());
    QGuiApplication::clipboard()->setText(QString(ValueBox::LongestEdited, u'b'));
    box.SetValue(u"\n"_s);
    press(u"V");
    EXPECT_EQ(QString(ValueBox::LongestEdited - 1, u'b') + u'\n', value);
    // What is dragged to another place in the box: one step, in which it is cut and pasted.
    press(u"A");
    press(u"C");
    QTextCursor cursor = box.textCursor();
    cursor.beginEditBlock();
    cursor.removeSelectedText();
    box.paste();
    cursor.endEditBlock();
    EXPECT_EQ(QString(ValueBox::LongestEdited - 1, u'b') + u'\n', value);
}

TEST_F(DatPage, OfAValueThatIsTooLongAPartIsShownAndClosingLeavesTheFocusHere)
{
    const QString value(100'001, u'a');
    folder.Put("a.dat", TextOf(MadeDat(u"N1 v1:a="_s + value)));
    Do(u"cmdDAT_Open"_s, u"%=@\\=@\\a.dat"_s);
    Do(u"row 1"_s, {});
    Do(u"type 7"_s, {});
    EXPECT_TRUE(Find("lblDAT_Part")->isVisible());
    EXPECT_EQ(u"Показано 100\u00A0000 из 100\u00A0001 знаков, только чтение"_s, Text("lblDAT_Part"));
    EXPECT_EQ(value.chopped(1), Find<QPlainTextEdit>("txtText")->toPlainText());
    Do(u"cmdDAT_Close"_s, {}); // and no question
    EXPECT_EQ(Find("cmdDAT_Open"), window->focusWidget());
    EXPECT_FALSE(Find("lblDAT_Part")->isVisible());
}

TEST_F(DatPage, ClosingWhileAFileIsReadEndsReading)
{
    QTimer::singleShot(0, [this] {
        Click("cmdClose");
        EXPECT_TRUE(window->isVisible() && !Find("cmdDAT_Open")->isEnabled());
    });
    Do(u"cmdDAT_Open"_s, u"%=@\\=@\\a.dat"_s);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !window->isVisible(); }));
    EXPECT_EQ(u"------ @ Объектов: 2"_s, State());
}

} // namespace

} // namespace wb
