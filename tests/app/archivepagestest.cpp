#include "app/statusstrip.h"
#include "archive/packerpage.h"
#include "archive/unpackerpage.h"
#include "support/table.h"
#include "support/windowtest.h"
#include "widgets/gauge.h"
#include "widgets/listbox.h"

#include <QElapsedTimer>
#include <QLineEdit>
#include <QTimer>

namespace wb
{

namespace
{

using namespace Qt::StringLiterals;
using Steps = std::vector<std::function<void()>>;

constexpr int FileCount = 300;
constexpr int UnderWay = 60; // yields
const QString DeepFolder = u"nnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnn"_s;

enum Pages { UnPack = 6, Pack = 7 };

class ArchivePages : public WindowTest
{
protected:
    void SetUp() override
    {
        const std::string name = DeepFolder.toStdString();
        const std::string deep = "tree/" + name + '/' + name + '/' + name;
        folder.MakeFolder(deep);
        for (int i = 0; i < FileCount; ++i)
            folder.Put(deep + "/f" + std::to_string(i));
        folder.Put("tree/b.txt", std::string(1000, 'b'));
        Settings settings;
        settings.Pack_Folder = folder.Path(u"tree"_s);
        settings.UnPack_Folder = folder.Path(u"out"_s);
        settings.Pack_FileName = settings.UnPack_FileName = folder.Path(u"x.pkg"_s);
        WriteSettings(settings);
    }

    // The control that has this name, with the page's own in place of the "%1".
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
    QString BoxText(Pages page, const char *name) const { return Of<QLineEdit>(page, name)->text(); }

    // Starts the page's job and takes the steps while it runs: the first when it is well under way, the
    // others 100 ms later each.
    void Run(Pages page, const Steps &steps = {})
    {
        std::size_t next = 0;
        int yields = 0;
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, [&] {
            if (++yields < UnderWay || next == steps.size())
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
        EXPECT_EQ(1024, window->width()); // long paths give way
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
        EXPECT_EQ(row.Text(4), BoxText(page, "txt%1_FileName")) << row.line;
        EXPECT_EQ(row.Text(5), BoxText(page, "txt%1_Folder")) << row.line;
    }
    auto *box = Of<QLineEdit>(Pack, "txt%1_Folder");
    box->setFocus();
    box->selectAll();
    QTest::keyClicks(box, u"/home/u"_s);
    EXPECT_EQ(u"/home/u"_s, box->text()); // left alone while it is typed
    for (const char *next :
         {"cmdPack_OpenFolder", "txtPack_FileName", "cmdPack_SaveFile", "chkPack_NotComperss", "cmdPack"}) {
        Key(Qt::Key_Tab);
        EXPECT_EQ(QLatin1String(next), window->focusWidget()->objectName());
    }
    CloseWindow();
    const Settings saved = WrittenSettings();
    const QStringList paths = {saved.Pack_Folder, saved.Pack_FileName, saved.UnPack_FileName,
                               saved.UnPack_Folder};
    EXPECT_EQ(u"C:\\home\\u C:\\y.pkg D:\\data\\x.pkg C:\\out"_s, paths.join(u' '));
}

TEST_F(ArchivePages, ArchivesAreMadeAndExtractedAlsoWithPauses)
{
    OpenWindow();
    for (const Pages page : {Pack, UnPack}) {
        QString status;
        const auto pause = [&] { Press(page, "cmd%1_Pause"); };
        const auto look = [&] {
            ExpectState(page, true, u"Прервать"_s, u"Продолжить"_s);
            status = Text("lblStatus");
        };
        const auto compare = [&] { EXPECT_EQ(status, Text("lblStatus")); };
        Run(page, {pause, look, compare, pause});
        ExpectState(page, false, page == Pack ? u"Запаковать"_s : u"Распаковать"_s, u"Пауза"_s);
        EXPECT_EQ(u"FLDR: "_s + DeepFolder, Line(page, 0));
        EXPECT_EQ(u"Завершено."_s, Line(page, -1));
    }
    EXPECT_EQ(std::string(1000, 'b'), folder.Get("out/b.txt"));

    const std::string compressed = folder.Get("x.pkg");
    const ScriptedDialogs::Answer no = {u"Файл x.pkg уже существует. Заменить?"_s, DefaultTitle, {}};
    dialogs.answers = {no, {no.asked, no.path, u"yes"_s}};
    QTest::mouseClick(Find("chkPack_NotComperss"), Qt::LeftButton, {}, {8, 12});
    Run(Pack);
    EXPECT_EQ(compressed, folder.Get("x.pkg"));
    Run(Pack);
    EXPECT_EQ(u"FILE:  b.txt"_s, Line(Pack, -3));
    EXPECT_EQ(u"Итог сжатия: 100%"_s, Line(Pack, -2));

    FileError error = FileError::None;
    const PkgHandle archive = PkgOpenRead(folder.Path(u"x.pkg"_s), error);
    const PkgEntry inner = PkgReadDirectory(*archive, archive->RootOffset).at(0);
    Find<UnpackerPage>("picPage(6)")->ExtractFolder(archive, folder.Path(u"i"_s), inner.Offset, u"pre\\"_s);
    EXPECT_EQ(u"FLDR: pre\\"_s + DeepFolder, Line(UnPack, 0));
    EXPECT_TRUE(std::filesystem::exists(folder.Native("i/" + DeepFolder.toStdString())));
}

TEST_F(ArchivePages, ErrorsComeInABoxAndStandOut)
{
    OpenWindow();
    dialogs.expectedErrors = {{u"File not found."_s, ErrorTitle}};
    Run(UnPack);
    EXPECT_EQ(u"Ошибка: файл не найден "_s + folder.Path(u"x.pkg"_s), Line(UnPack, -1));
    Run(Pack);
    const auto hasMark = [this](Pages page) {
        const auto picture = Line(page, -1, Qt::DecorationRole).value<QIcon>();
        return picture.pixmap(16).toImage().pixelColor(8, 3).alpha() > 0;
    };
    EXPECT_TRUE(hasMark(UnPack));
    EXPECT_FALSE(hasMark(Pack));
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

TEST(StatusStrip, ShowsManyFastStepsNowAndThen)
{
    StatusStrip strip(nullptr);
    const auto *bar = strip.findChild<Gauge *>(u"prgProgress"_s);
    QElapsedTimer timer;
    timer.start();
    strip.ProgressStart(20000, {});
    int shown = 0;
    for (int step = 1; step <= 20000; ++step) {
        strip.ProgressStep(step, QString::number(step));
        shown += bar->Value() == step;
        ASSERT_GT(shown, 0); // the first
    }
    EXPECT_EQ(20000, bar->Value());
    EXPECT_LE(shown, 2 + timer.elapsed() / 20);
}

} // namespace

} // namespace wb
