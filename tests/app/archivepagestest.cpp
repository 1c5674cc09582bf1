#include "archive/packerpage.h"
#include "support/table.h"
#include "support/windowtest.h"
#include "widgets/gauge.h"
#include "widgets/listbox.h"

#include <QLineEdit>
#include <QTimer>

namespace wb
{

namespace
{

using namespace Qt::StringLiterals;
using Steps = std::vector<std::function<void()>>;

constexpr int FileCount = 300;

enum Pages { UnPack = 6, Pack = 7 };

class ArchivePages : public WindowTest
{
protected:
    void SetUp() override
    {
        folder.MakeFolder("tree/sub/sub");
        for (int i = 0; i < FileCount; ++i)
            folder.Put("tree/sub/sub/f" + std::to_string(i));
        folder.Put("tree/b.txt", std::string(1000, 'b'));
        Settings settings;
        settings.Pack_Folder = folder.Path(u"tree"_s);
        settings.UnPack_Folder = folder.Path(u"out"_s);
        settings.Pack_FileName = settings.UnPack_FileName = folder.Path(u"x.pkg"_s);
        WriteSettings(settings);
    }

    // The control of that name, the page's own in place of the "%1".
    template <typename Widget = QWidget>
    Widget *Of(Pages page, const char *name) const
    {
        return Find<Widget>(qPrintable(QLatin1String(name).arg(page == Pack ? u"Pack" : u"UnPack")));
    }
    ListBox *Log(Pages page) const { return Of<ListBox>(page, "lst%1_Work"); }
    QVariant Line(Pages page, int row, int role = Qt::DisplayRole) const
    {
        const int count = Log(page)->ListCount();
        return Log(page)->model()->index((row + count) % count, 0).data(role); // -1 is the last one
    }
    void Press(Pages page, const char *name) const { QTest::mouseClick(Of(page, name), Qt::LeftButton); }

    // Starts the page's job and takes the steps 100 ms apart, the first when the job is well under way.
    void Run(Pages page, const Steps &steps = {})
    {
        std::size_t next = 0;
        int yields = 0;
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, [&] {
            if (++yields < FileCount / 5 || next == steps.size())
                return;
            timer.setInterval(100);
            steps[next++]();
        });
        timer.start(0);
        window->ShowPage(page);
        Press(page, "cmd%1");
        EXPECT_EQ(steps.size(), next) << page;
    }

    void ExpectState(Pages page, bool isBusy, const QString &start, const QString &pause) const
    {
        EXPECT_EQ(start, Of<QAbstractButton>(page, "cmd%1")->text());
        EXPECT_EQ(pause, Of<QAbstractButton>(page, "cmd%1_Pause")->text());
        EXPECT_EQ(isBusy, Of(page, "cmd%1_Pause")->isEnabled());
        for (const char *input : {"txt%1_Folder", "txt%1_FileName", "cmd%1_OpenFolder"})
            EXPECT_EQ(!isBusy, Of(page, input)->isEnabled()) << input;
        EXPECT_EQ(!isBusy, Of<QLabel>(page, "lbl%1_Work")->text().isEmpty());
        EXPECT_EQ(!isBusy, Text("lblStatus").isEmpty());
        EXPECT_EQ(isBusy, Find<Gauge>("prgProgress")->isVisible() && Find<Gauge>("prgProgress")->Value() > 0);
        EXPECT_GT(Log(page)->TopIndex(), 0);
        EXPECT_EQ(Log(page)->ListCount(), Log(page)->TopIndex() + Log(page)->WholeRowsInView());
    }
};

TEST_F(ArchivePages, DialogsAndKeysFillThePathsAndTheSettings)
{
    WriteSettings(DefaultSettings());
    OpenWindow();
    for (const TableRow &row : ReadTable("app/archivepaths.txt", 6)) {
        const Pages page = row.Text(0).startsWith(u"cmdPack") ? Pack : UnPack;
        window->ShowPage(page);
        dialogs.answers = {{row.Text(1), row.Text(2), row.Text(3)}};
        Click(row.Bytes(0).c_str());
        EXPECT_EQ(row.Text(4), Of<QLineEdit>(page, "txt%1_FileName")->text()) << row.line;
        EXPECT_EQ(row.Text(5), Of<QLineEdit>(page, "txt%1_Folder")->text()) << row.line;
    }
    auto *box = Of<QLineEdit>(Pack, "txt%1_Folder");
    box->setFocus(Qt::TabFocusReason); // selects what it holds
    QTest::keyClicks(box, u"/home/u"_s);
    EXPECT_EQ(u"/home/u"_s, box->text()); // left alone while it is typed
    for (const char *next :
         {"cmdPack_OpenFolder", "txtPack_FileName", "cmdPack_SaveFile", "chkPack_NotComperss", "cmdPack"}) {
        Key(Qt::Key_Tab);
        EXPECT_EQ(QLatin1String(next), window->focusWidget()->objectName());
    }
    CloseWindow();
    const Settings saved = WrittenSettings();
    EXPECT_EQ(u"C:\\home\\u C:\\y.pkg"_s, saved.Pack_Folder + u' ' + saved.Pack_FileName);
    EXPECT_EQ(u"D:\\data\\x.pkg C:\\out"_s, saved.UnPack_FileName + u' ' + saved.UnPack_Folder);
}

TEST_F(ArchivePages, TheButtonsPackAndUnpackAlsoWithPauses)
{
    OpenWindow();
    dialogs.expectedErrors = {{u"File not found."_s, ErrorTitle}};
    Run(UnPack);
    EXPECT_EQ(u"Ошибка: файл не найден "_s + folder.Path(u"x.pkg"_s), Line(UnPack, 0));
    const auto mark = Line(UnPack, 0, Qt::DecorationRole).value<QIcon>().pixmap(16).toImage();
    for (const Pages page : {Pack, UnPack}) {
        QString status;
        const auto pause = [&] { Press(page, "cmd%1_Pause"); };
        const auto look = [&] {
            ExpectState(page, true, u"Прервать"_s, u"Продолжить"_s);
            status = Text("lblStatus");
        };
        Run(page, {pause, look, [&] { EXPECT_EQ(status, Text("lblStatus")); }, pause});
        ExpectState(page, false, page == Pack ? u"Запаковать"_s : u"Распаковать"_s, u"Пауза"_s);
        EXPECT_EQ(u"FLDR: sub"_s, Line(page, 0));
        EXPECT_EQ(u"Завершено."_s, Line(page, -1));
        EXPECT_NE(mark, Line(page, -1, Qt::DecorationRole).value<QIcon>().pixmap(16).toImage());
    }
    EXPECT_EQ(std::string(1000, 'b'), folder.Get("out/b.txt"));

    const std::string compressed = folder.Get("x.pkg");
    const ScriptedDialogs::Answer no = {u"Файл x.pkg уже существует. Заменить?"_s, DefaultTitle, {}};
    dialogs.answers = {no, {no.asked, no.path, u"yes"_s}};
    QTest::mouseClick(Find("chkPack_NotComperss"), Qt::LeftButton, {}, {8, 12});
    Run(Pack);
    EXPECT_EQ(compressed, folder.Get("x.pkg"));
    Run(Pack);
    EXPECT_EQ(u"Итог сжатия: 100%"_s, Line(Pack, -2));
}

TEST_F(ArchivePages, AbortAndCloseEndAJobAlsoAPausedOne)
{
    OpenWindow();
    Run(Pack); // something to unpack
    Find<PackerPage>("picPage(7)")->SetPaths(folder.Path(u"tree"_s), folder.Path(u"y.pkg"_s));
    CloseWindow();
    Pages page = Pack;
    const auto pause = [&] { Press(page, "cmd%1_Pause"); };
    const auto abort = [&] { Press(page, "cmd%1"); };
    const auto close = [&] {
        Click("cmdClose");
        EXPECT_TRUE(window->isVisible()); // the job still stands on it
    };
    const auto packAndClose = [&] {
        Run(Pack, {close});
        QTest::qWait(20);
        EXPECT_TRUE(window->isVisible()); // the other job does
    };
    const Steps cases[] = {{abort}, {pause, abort}, {close}, {pause, close}, {packAndClose}};
    for (std::size_t i = 0; i < 2 * std::size(cases) - 1; ++i) {
        page = i < std::size(cases) ? UnPack : Pack;
        const bool closes = i % std::size(cases) > 1;
        std::filesystem::remove(folder.Native("y.pkg"));
        OpenWindow();
        std::filesystem::remove(settingsFolder.Native("Options.ini"));
        Run(page, cases[i % std::size(cases)]);
        EXPECT_EQ(u"Прервано пользователем."_s, Line(page, -1)) << i;
        EXPECT_LT(Log(page)->ListCount(), FileCount) << i;
        EXPECT_EQ(closes, QTest::qWaitFor([this] { return !window->isVisible(); }, closes ? 5000 : 50)) << i;
        EXPECT_EQ(closes, std::filesystem::exists(settingsFolder.Native("Options.ini"))) << i;
        CloseWindow();
    }
}

} // namespace

} // namespace wb
