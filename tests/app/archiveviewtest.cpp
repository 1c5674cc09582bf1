#include "app/statusstrip.h"
#include "support/madepkg.h"
#include "support/windowtest.h"
#include "viewer/viewerpage.h"
#include "widgets/filelistbox.h"

#include <QLineEdit>

namespace wb
{

namespace
{

const QString AllFiles = QStringLiteral("Все файлы (*.*)|*.*");
const QString FolderPrompt = QStringLiteral("Выберите папку, в которую извлечь файлы:");
const ScriptedDialogs::Box NoAccess = {QStringLiteral("File access denied."), ErrorTitle};

class ArchiveView : public WindowTest
{
protected:
    void SetUp() override
    {
        folder.AddGi("wide.gi", MakePicture(64, 48, 0xFFFF0000), 0, 0);
        folder.AddGi("small.gi", MakePicture(8, 8, 0xFF00FF00), 0, 0);
        const MadeFile wide{QStringLiteral("p.gi"), folder.Get("wide.gi"), true};
        const MadeFile small{QStringLiteral("p.gi"), folder.Get("small.gi")}; // differs in what it holds only
        const std::vector<MadeFolder> inside = {{QStringLiteral("Gfx"), {small}}, {QStringLiteral("a:b")}};
        folder.Put("a.pkg", MakePkg({{}, {wide, small, {QStringLiteral("x/y.txt"), "text"}}, inside}));
        folder.Put("b.pkg", MakePkg({{}, {small}}));
        folder.MakeFolder("inner");
    }

    ListBox *Entries() const { return Find<ListBox>("lstPKG"); }
    QString PathBox() const { return Find<QLineEdit>("txtPath")->text(); }

    std::string Names() const
    {
        std::string names;
        for (int row = 0; row < Entries()->ListCount(); ++row)
            names += Entries()->model()->index(row, 0).data().toString().toStdString() + ' ';
        return names;
    }

    void DoubleClickFile(const QString &name) const { ClickRow(List(), List()->FindName(name, 0), true); }

    const QString a = folder.Path(QStringLiteral("a.pkg"));
    const QString inner = folder.Path(QStringLiteral("inner"));
};

TEST_F(ArchiveView, AnArchiveIsWalkedWithMouseAndKeys)
{
    OpenWindow();
    ClickRow(QStringLiteral("a.pkg"));
    EXPECT_TRUE(List()->isVisible());
    DoubleClickFile(QStringLiteral("a.pkg"));
    EXPECT_EQ(".. a:b Gfx p.gi p.gi x/y.txt ", Names());
    ClickRow(Entries(), 2, true);
    EXPECT_EQ(".. p.gi ", Names());
    EXPECT_EQ(a + QStringLiteral("\\Gfx"), PathBox());
    EXPECT_FALSE(Find("cmdExtract")->isEnabled());
    ClickRow(Entries(), 1);
    EXPECT_EQ(QStringLiteral("|  8 x 8"), Text("lblSize"));
    EXPECT_EQ(QStringLiteral(" Объектов: 1  |  Размер: 224 байт"), Text("lblFiles"));
    EXPECT_TRUE(Find("cmdExtract")->isEnabled());
    Key(Qt::Key_Backspace);
    EXPECT_EQ(2, Entries()->ListIndex());
    Key(Qt::Key_Return);
    Key('\\');
    EXPECT_EQ(0, Entries()->ListIndex());
    Click("cmdSub");
    EXPECT_TRUE(List()->hasFocus());
    Key('2');
    EXPECT_EQ("", Names() + PathBox().toStdString());
}

TEST_F(ArchiveView, NothingIsReadTwiceAndEntriesOfOnePathAreToldApart)
{
    OpenWindow(QStringLiteral("a.pkg"));
    ClickRow(Entries(), 4);
    EXPECT_EQ(QStringLiteral("|  8 x 8"), Text("lblSize"));
    ClickRow(Entries(), 3);
    folder.Put("a.pkg", std::string(9000, '\0')); // the same file, while it is open
    ClickRow(Entries(), 3);
    EXPECT_EQ(QStringLiteral("|  64 x 48"), Text("lblSize"));
    Key('1');
    DoubleClickFile(QStringLiteral("a.pkg"));
    EXPECT_EQ(6, Entries()->ListCount());
    ClickRow(Entries(), 4);
    EXPECT_EQ(QStringLiteral("|"), Text("lblSize"));
    Drop({"b.pkg"});
    ClickRow(Entries(), 1);
    EXPECT_EQ(QStringLiteral("|  8 x 8"), Text("lblSize"));
}

TEST_F(ArchiveView, OnlyADoubleClickReportsAnArchiveThatCannotBeOpened)
{
    OpenWindow();
    ASSERT_EQ(0, std::remove(folder.Native("b.pkg").c_str()));
    folder.MakePipe("b.pkg"); // it is listed as the file it was
    ClickRow(QStringLiteral("b.pkg"));
    dialogs.expectedErrors = {NoAccess};
    DoubleClickFile(QStringLiteral("b.pkg"));
    EXPECT_TRUE(List()->isVisible());
}

TEST_F(ArchiveView, AFileIsExtractedUnderASafeName)
{
    OpenWindow(QStringLiteral("a.pkg"));
    ClickRow(Entries(), 5);
    dialogs.answers = {{AllFiles, QStringLiteral("x_y.txt"), inner + QStringLiteral("\\out")},
                       {AllFiles, inner + QStringLiteral("\\x_y.txt"), a + QStringLiteral("\\out")}};
    dialogs.expectedErrors = {NoAccess};
    Key('e');
    Click("cmdExtract");
    EXPECT_EQ("text", folder.Get("inner/out"));
}

TEST_F(ArchiveView, FoldersAndArchivesAreHandedOver)
{
    OpenWindow(QStringLiteral("b.pkg"));
    const auto text = [this](const char *box) { return Find<QLineEdit>(box)->text(); };
    Key('u'); // not in view
    Key('1');
    Click("cmdUnPacker");
    EXPECT_EQ(folder.Path(QStringLiteral("b.pkg")), text("txtUnPack_FileName"));
    EXPECT_EQ(folder.Path(QStringLiteral("b")), text("txtUnPack_Folder"));
    Click("cmdPage(0)");
    ClickRow(QStringLiteral("inner"));
    Key('p');
    EXPECT_EQ(folder.Path(QStringLiteral("inner")), text("txtPack_Folder"));
    EXPECT_EQ(folder.Path(QStringLiteral("inner.pkg")), text("txtPack_FileName"));
    Click("cmdPage(0)");
    DoubleClickFile(QStringLiteral("a.pkg"));
    dialogs.expectedErrors = {{QStringLiteral("Invalid path."), ErrorTitle}};
    ClickRow(Entries(), 1);
    Click("cmdExtract");
    dialogs.answers = {{FolderPrompt, QString(), folder.Path()}};
    ClickRow(Entries(), 2);
    Click("cmdExtract");
    EXPECT_TRUE(Find("picPage(6)")->isVisible());
    EXPECT_EQ(folder.Get("small.gi"), folder.Get("Gfx/p.gi"));
}

struct RunningJob : ArchiveJob {
    using ArchiveJob::ArchiveJob;
    JobReport report{{}, [](const QString &) {}, {}};
    Running running{*this, report};
};

TEST_F(ArchiveView, NothingIsExtractedWhileTheUnpackerIsBusy)
{
    Settings settings = DefaultSettings();
    AbortFlag abort;
    const frmRes res;
    StatusStrip strip(nullptr);
    const RunningJob job(strip);
    DatEditor datEditor(settings, dialogs, strip);
    ViewerPage page(settings, dialogs, strip, abort, res, job, datEditor, nullptr);
    page.OpenNamed(folder.Path(), QStringLiteral("a.pkg"));
    page.findChild<ListBox *>(QStringLiteral("lstPKG"))->SetListIndex(5);
    dialogs.expectedErrors = {{QStringLiteral("PKG UnPacker занят."), ErrorTitle}};
    page.findChild<QAbstractButton *>(QStringLiteral("cmdExtract"))->click();
}

} // namespace

} // namespace wb
