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

const QString Filter = u"DAT файлы (*.dat)|*.dat|Все файлы (*.*)|*.*"_s;
const ScriptedDialogs::Box NoAccess = {u"File access denied."_s, ErrorTitle};

DatEditorState Opened(const QString &notation)
{
    DatEditorState state;
    state.Open(DatParse(MadeDat(notation)), {});
    return state;
}

TEST(DatEditorState, BlocksOfOnePathAndIdAreToldApart)
{
    DatEditorState state =
        Opened(u"N3 v5:t=0 b1:Item N1 b5:In P1 1:p=1 b1:Item N2 v1:x=2 b5:In P3 3:q=3 1:p=4 2:r=5"_s);
    EXPECT_TRUE(state.Enter(3) && state.Enter(2));
    EXPECT_EQ(u"Item\\In"_s, state.CurrentPath());
    EXPECT_EQ(3, state.ObjectCount());
    EXPECT_EQ((std::vector{9, 10}), state.Rows()) << "type 3 has no row";
    state.Select(1);
    EXPECT_EQ(u"4"_s, state.Value());
    EXPECT_FALSE(state.Modified());
    state.SetValue(u"new"_s);
    EXPECT_TRUE(state.Modified());
    EXPECT_TRUE(state.Enter(2)) << "a pair of a block's type holds nothing";
    EXPECT_TRUE(state.Rows().empty());
    EXPECT_EQ(2, state.Leave());
    state.Select(2);
    EXPECT_FALSE(state.ValueSelected());
    EXPECT_EQ(2, state.Leave());
    EXPECT_EQ(3, state.Leave());
    EXPECT_EQ(0, state.Leave());
    EXPECT_FALSE(state.Enter(0) || state.Enter(1) || state.Enter(4));
    EXPECT_EQ(u"1"_s, state.Tree().Value(4));
    EXPECT_EQ(u"new"_s, state.Tree().Value(9));
}

TEST(DatEditorState, BlocksBelowTheDeepestLevelAreShownOnly)
{
    DatEditorState state = Opened(NestedDat(300));
    for (int depth = 1; depth <= 255; ++depth)
        EXPECT_TRUE(state.Enter(1)) << depth;
    EXPECT_EQ(1U, state.Rows().size());
    EXPECT_FALSE(state.Enter(1));
    EXPECT_EQ(255, state.Depth());
    EXPECT_EQ(1, state.Leave());
    state.ShowRoot();
    EXPECT_EQ(QString(), state.CurrentPath());
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

class Editor : public testing::Test
{
protected:
    void SetUp() override
    {
        folder.Put("a.dat", older);
        settings.OpenDir = folder.Path();
        QObject::connect(&editor, &DatEditor::WorkChanged, [this](const QString &text) { told += text; });
    }
    void Open(const QString &name)
    {
        dialogs.answers = {{Filter, folder.Path({}), folder.Path(name)}};
        editor.Open();
    }
    void Change()
    {
        editor.Select(1);
        editor.SetValue(u"changed"_s);
    }

    TempFolder folder;
    ScriptedDialogs dialogs;
    Settings settings = DefaultSettings();
    Meddling progress;
    DatEditor editor{settings, dialogs, progress};
    QString told;
    const std::string older = TextOf(MadeDat(u"N2 v1:a=b b2:c P1 1:d=e"_s));
    const std::string newer = TextOf(MadeDat(u"N2 v1:a=changed b2:c P1 1:d=e"_s));
};

TEST_F(Editor, AFailedSaveLosesNothing)
{
    Open(u"a.dat"_s);
    Change();
    dialogs.answers = {{u"Файл a.dat был изменен. Сохранить изменения?"_s, u"Вопрос"_s, u"yes"_s}};
    dialogs.expectedErrors = {NoAccess, NoAccess};
    OnAFullDisk(10, [this] { EXPECT_FALSE(editor.Close()); });
    folder.MakeFolder("taken.dat");
    dialogs.answers = {{Filter, folder.Path(u"a.dat"_s), folder.Path(u"taken.dat"_s)}};
    EXPECT_FALSE(editor.SaveAs());
    EXPECT_TRUE(editor.State().Modified());
    EXPECT_EQ(older, folder.Get("a.dat"));
    editor.SetZL(true);
    told.clear();
    dialogs.answers = {{Filter, folder.Path(u"taken.dat"_s), folder.Path(u"b.dat"_s)}};
    EXPECT_TRUE(editor.SaveAs());
    Open(u"b.dat"_s); // without a question
    EXPECT_EQ(u"Запись данных ...Сжатие данных ...Распаковка данных ...Чтение данных ..."_s, told);
    EXPECT_TRUE(editor.State().Tree().IsZL);
    EXPECT_EQ(newer, TextOf(editor.State().Tree().Bytes()));
}

TEST_F(Editor, NothingChangesTheDocumentWhileItIsReadOrWritten)
{
    int meddled = 0;
    progress.action = [&] {
        const auto rows = editor.State().Rows();
        editor.Open();
        editor.SetValue(u"meddled"_s);
        editor.GoToRoot();
        editor.Activate(0);
        editor.SetZL(true);
        EXPECT_FALSE(editor.Close() || editor.Save() || editor.SaveAs());
        EXPECT_TRUE(editor.IsBusy());
        EXPECT_EQ(rows, editor.State().Rows());
        ++meddled;
    };
    Open(u"a.dat"_s);
    Change();
    EXPECT_TRUE(editor.Save());
    EXPECT_EQ(2, meddled);
    EXPECT_EQ(newer, folder.Get("a.dat"));
    progress.action = [this] { editor.AbortReading(); };
    Open(u"a.dat"_s); // and no box
    EXPECT_FALSE(editor.State().DocOpen() || editor.IsBusy());
}

} // namespace

} // namespace wb
