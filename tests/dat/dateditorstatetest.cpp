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
    state.Open(DatParse(MadeDat(notation)), u"C:\\a.dat"_s);
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

// Every step calls what a user could, as events would.
class Meddling : public Progress
{
public:
    void ProgressStart(std::int32_t, const QString &) override { Meddle(); }
    void ProgressStep(std::int32_t, const QString &) override { Meddle(); }
    void ProgressWait() override {}
    void ProgressClear() override {}
    void Meddle()
    {
        if (action)
            action();
    }
    std::function<void()> action;
};

class Editor : public testing::Test
{
protected:
    void SetUp() override
    {
        folder.Put("a.dat", TextOf(MadeDat(u"N2 v1:a=b b2:c P1 1:d=e"_s)));
        folder.Put("bad.dat", "ZL01 and no more");
        settings.OpenDir = folder.Path();
        QObject::connect(&editor, &DatEditor::WorkChanged,
                         [this](const QString &text) { told += text.isEmpty() ? text : text + u'|'; });
    }
    void Open(const QString &name)
    {
        dialogs.answers.push_back({Filter, folder.Path({}), folder.Path(name)});
        editor.Open();
    }
    void Change()
    {
        editor.Select(1);
        editor.SetValue(u"changed"_s);
    }
    void Answer(const QString &name, const QString &answer)
    {
        dialogs.answers.push_back(
            {u"Файл %1 был изменен. Сохранить изменения?"_s.arg(name), u"Вопрос"_s, answer});
    }

    TempFolder folder;
    ScriptedDialogs dialogs;
    Settings settings = DefaultSettings();
    Meddling progress;
    DatEditor editor{settings, dialogs, progress};
    QString told;
};

TEST_F(Editor, NothingIsLostWithoutAQuestion)
{
    dialogs.expectedErrors = {{u"Invalid or crypted file."_s, ErrorTitle}};
    Open(u"bad.dat"_s);
    EXPECT_FALSE(editor.State().DocOpen() || editor.Save() || editor.SaveAs());
    Open(u"a.dat"_s);
    Change();
    Answer(u"a.dat"_s, u"cancel"_s);
    editor.Open();
    Answer(u"a.dat"_s, u"cancel"_s);
    editor.Activate(0); // the way up from the root
    EXPECT_EQ(u"changed"_s, editor.State().Value());
    const std::string older = folder.Get("a.dat");
    Answer(u"a.dat"_s, u"yes"_s);
    dialogs.expectedErrors = {NoAccess};
    OnAFullDisk(10, [this] { EXPECT_FALSE(editor.Close()); });
    EXPECT_EQ(older, folder.Get("a.dat"));
    EXPECT_TRUE(editor.State().Modified());

    editor.SetZL(true);
    folder.MakeFolder("taken.dat");
    dialogs.answers = {{Filter, folder.Path(u"a.dat"_s), folder.Path(u"taken.dat"_s)}};
    dialogs.expectedErrors = {NoAccess};
    EXPECT_FALSE(editor.SaveAs());
    EXPECT_TRUE(editor.State().Modified());
    dialogs.answers = {{Filter, folder.Path(u"taken.dat"_s), folder.Path(u"b.dat"_s)}};
    told.clear();
    EXPECT_TRUE(editor.SaveAs());
    EXPECT_EQ(u"Запись данных ...|Сжатие данных ...|"_s, told);
    EXPECT_EQ(older, folder.Get("a.dat"));
    told.clear();
    Open(u"b.dat"_s); // no question
    EXPECT_TRUE(told.startsWith(u"Распаковка данных ...|Чтение данных ...|"_s)) << told.toStdString();
    EXPECT_TRUE(editor.State().Tree().IsZL);
    editor.Select(1);
    EXPECT_EQ(u"changed"_s, editor.State().Value());
    editor.SetZL(false);
    EXPECT_TRUE(editor.Save());
    EXPECT_EQ(TextOf(MadeDat(u"N2 v1:a=changed b2:c P1 1:d=e"_s)), folder.Get("b.dat"));
    Change();
    Answer(u"b.dat"_s, u"no"_s);
    EXPECT_TRUE(editor.Close());
}

TEST_F(Editor, NothingChangesTheDocumentWhileItIsReadOrWritten)
{
    int meddled = 0;
    progress.action = [&] {
        EXPECT_TRUE(editor.IsBusy());
        const auto rows = editor.State().Rows();
        editor.Open();
        editor.SetValue(u"meddled"_s);
        editor.GoToRoot();
        editor.Activate(0);
        editor.SetZL(true);
        EXPECT_FALSE(editor.Close() || editor.Save() || editor.SaveAs());
        EXPECT_EQ(rows, editor.State().Rows());
        ++meddled;
    };
    Open(u"a.dat"_s);
    Change();
    EXPECT_TRUE(editor.Save());
    EXPECT_GE(meddled, 4);
    EXPECT_EQ(TextOf(MadeDat(u"N2 v1:a=changed b2:c P1 1:d=e"_s)), folder.Get("a.dat"));
    progress.action = [this] { editor.AbortReading(); };
    Open(u"a.dat"_s); // and no box
    EXPECT_FALSE(editor.State().DocOpen() || editor.IsBusy());
}

} // namespace

} // namespace wb
