#include "archive/zlblock.h"
#include "dat/dateditor.h"
#include "dat/datreader.h"
#include "support/fulldisk.h"
#include "support/madedat.h"
#include "support/scripteddialogs.h"
#include "support/tempfolder.h"

namespace wb
{

namespace
{

using namespace Qt::StringLiterals;

const ScriptedDialogs::Box NoAccess = {u"File access denied."_s, ErrorTitle};

TEST(DatEditorState, BlocksOfOnePathAndIdAreToldApartDownToTheDeepestLevel)
{
    DatEditorState state;
    state.Open(DatParse(MadeDat(u"N3 v5:t=0 b1:Item N1 b5:In P1 1:p=1 b1:Item N2 v1:x=2 b5:In P3 3:q=3 1:p=4 "
                                "2:r=5"_s)),
               {});
    EXPECT_TRUE(state.Enter(3) && state.Enter(2));
    EXPECT_EQ(u"Item\\In"_s, state.CurrentPath());
    EXPECT_EQ((std::vector{9, 10}), state.Rows()) << "type 3 has no row";
    state.Select(1);
    EXPECT_FALSE(state.Modified());
    state.SetValue(u"new"_s);
    EXPECT_TRUE(state.Modified());
    EXPECT_TRUE(state.Enter(2) && state.Rows().empty()) << "a pair of a block's type holds nothing";
    for (const int row : {2, 2, 3, 0})
        EXPECT_EQ(row, state.Leave());
    EXPECT_FALSE(state.Enter(0) || state.Enter(1) || state.Enter(4));
    EXPECT_EQ(u"1 new"_s, state.Tree().Value(4) + u' ' + state.Tree().Value(9));

    state.Open(DatParse(MadeDat(u"N1 b1:a "_s.repeated(300) + u"P0"_s)), {});
    while (state.Enter(1))
        ASSERT_EQ(1U, state.Rows().size());
    EXPECT_EQ(255, state.Depth());
    EXPECT_EQ(1, state.Leave());
}

// Every step does what a user could, as events would.
class Meddling : public Progress
{
public:
    void ProgressStart(std::int32_t, const QString &) override {}
    void ProgressStep(std::int32_t, const QString &) override { action(); }
    void ProgressWait() override {}
    void ProgressClear() override {}
    std::function<void()> action = [] {};
};

TEST(DatReading, EndsWithinABlockWhenItIsAbortedOrTakesTooMuch)
{
    ByteArray bytes = MadeDat(u"P1000000"_s);
    bytes.resize(bytes.size() + 5'000'000, 0);
    DatTree tree = DatParse(bytes);
    tree.IsZL = true;
    for (const ByteArray &file : {bytes, DatSerialize(tree)})
        for (const auto &[last, limit] : {std::pair{0, 0}, {3, 0}, {0, 4'900'000}, {0, 30'000'000}}) {
            Meddling progress;
            AbortFlag abort;
            int steps = 0;
            progress.action = [&, end = last] { ++steps == end ? abort.Set() : void(); };
            const DatTree read = DatParse(file, {.Bar = &progress, .Abort = &abort, .MemoryLimit = limit});
            EXPECT_EQ(last + limit == 0 ? 1'000'001 : 0, read.Count()) << last << ' ' << limit;
            EXPECT_EQ(last > 0, steps == 3) << steps << ' ' << limit;
        }
}

TEST(DatReading, TakesMemoryInProportionToTheFile)
{
    ByteArray bytes = MadeDat(u"P4000000"_s), packed;
    bytes.resize(bytes.size() + 20'000'000, 0);
    ZlBlockPack(packed, bytes);
    EXPECT_EQ(0, DatParse(packed).Count()) << packed.size();
    DatTree tree = DatParse(std::move(bytes), {.MemoryLimit = 400'000'000});
    EXPECT_EQ(4'000'001, tree.Count());
    tree.IsZL = true;
    EXPECT_TRUE(DatSerialize(tree).empty()) << "it would not be read again";
}

class Editor : public testing::Test
{
protected:
    Editor()
    {
        folder.Put("a.dat", older);
        Open(u"a.dat"_s);
        editor.Select(1);
        editor.SetValue(u"changed"_s);
    }
    void Open(const QString &name)
    {
        dialogs.answers = {{filter, folder.Path({}), folder.Path(name)}};
        settings.OpenDir = folder.Path();
        editor.Open();
    }

    const QString filter = u"DAT файлы (*.dat)|*.dat|Все файлы (*.*)|*.*"_s;
    const std::string older = TextOf(MadeDat(u"N2 v1:a=b b2:c P1 1:d=e"_s));
    const std::string newer = TextOf(MadeDat(u"N2 v1:a=changed b2:c P1 1:d=e"_s));
    TempFolder folder;
    ScriptedDialogs dialogs;
    Settings settings;
    Meddling progress;
    DatEditor editor{settings, dialogs, progress};
};

TEST_F(Editor, AFailedSaveLosesNothing)
{
    QString told;
    QObject::connect(&editor, &DatEditor::WorkChanged, [&](const QString &text) { told += text; });
    dialogs.answers = {{u"Файл a.dat был изменен. Сохранить изменения?"_s, u"Вопрос"_s, u"yes"_s}};
    dialogs.expectedErrors = {NoAccess, NoAccess};
    OnAFullDisk(10, [this] { EXPECT_FALSE(editor.Close()); });
    folder.MakeFolder("taken.dat");
    dialogs.answers = {{filter, folder.Path(u"a.dat"_s), folder.Path(u"taken.dat"_s)}};
    EXPECT_FALSE(editor.SaveAs());
    EXPECT_TRUE(editor.State().Modified());
    EXPECT_EQ(older, folder.Get("a.dat"));
    editor.SetZL(true);
    told.clear();
    dialogs.answers = {{filter, folder.Path(u"taken.dat"_s), folder.Path(u"b.dat"_s)}};
    EXPECT_TRUE(editor.SaveAs());
    Open(u"b.dat"_s); // without a question
    EXPECT_EQ(u"Запись данных ...Сжатие данных ...Распаковка данных ...Чтение данных ..."_s, told);
    EXPECT_EQ(newer, TextOf(editor.State().Tree().Bytes()));
}

TEST_F(Editor, NothingChangesTheDocumentWhileItIsReadOrWritten)
{
    progress.action = [this] {
        EXPECT_TRUE(editor.IsBusy());
        const auto rows = editor.State().Rows();
        editor.Open();
        editor.SetValue(u"meddled"_s);
        editor.GoToRoot();
        editor.Activate(0);
        editor.SetZL(true);
        EXPECT_FALSE(editor.Close() || editor.Save() || editor.SaveAs());
        EXPECT_EQ(rows, editor.State().Rows());
    };
    EXPECT_TRUE(editor.Save());
    EXPECT_EQ(newer, folder.Get("a.dat"));
    progress.action = [this] { editor.AbortReading(); };
    Open(u"a.dat"_s); // and no box
    EXPECT_FALSE(editor.State().DocOpen() || editor.IsBusy());
}

// The window closes behind such a save; no picker may come up over it.
TEST_F(Editor, OpeningEndsWithTheSaveThatIsAborted)
{
    progress.action = [this] { editor.AbortReading(); };
    dialogs.answers = {{u"Файл a.dat был изменен. Сохранить изменения?"_s, u"Вопрос"_s, u"yes"_s}};
    editor.Open();
    EXPECT_EQ(newer, folder.Get("a.dat"));
    progress.action = [] {};
    Open(u"a.dat"_s);
    EXPECT_TRUE(editor.State().DocOpen());
}

} // namespace

} // namespace wb
