#include "anim/animproject.h"
#include "anim/gaireader.h"
#include "anim/gaiwriter.h"
#include "anim/haiproject.h"
#include "gi/madegi.h"
#include "gi/picturefile.h"
#include "support/table.h"

#include <QRegularExpression>

namespace wb::test
{
namespace
{

using namespace Qt::StringLiterals;

class ProjectsTest : public testing::Test
{
protected:
    void SetUp() override
    {
        folder.AddSprites();
        folder.AddPng("small.png", MakePicture(23, 37, 0xFF123456));
    }
    QStringList Paths(QStringList names) const
    {
        return names.replaceInStrings(QRegularExpression(u"^"_s), folder.Path(u""_s));
    }
    void Do(const QString &what)
    {
        const QStringList words = what.split(u' ');
        const QString &verb = words[0], path = folder.Path(u"a.hai"_s);
        const auto list = HaiProject::ListName(words.value(1).toInt());
        verb == u"add"_s       ? (void)hai.AddFiles(list, Paths(words.mid(2)), step)
        : verb == u"copy"_s    ? hai.CopySelected(list)
        : verb == u"copyall"_s ? hai.CopyAll(list, step)
        : verb == u"remove"_s  ? hai.RemoveSelected(list)
        : verb == u"move"_s    ? hai.MoveSelected(words[1].toInt())
        : verb == u"save"_s    ? (void)hai.Save(path, step)
        : verb == u"open"_s    ? void(leftOut = hai.Open(path, step))
        : verb == u"clean"_s   ? hai.Clean(list)
        : verb == u"take"_s    ? (void)anim.AddFiles(Paths(words.mid(2)), step)
        : verb == u"drop"_s    ? anim.RemoveSelected()
        : verb == u"shift"_s   ? anim.MoveSelected(words[1].toInt())
        : verb == u"build"_s   ? anim.Build(step)
        : verb == u"back"_s    ? anim.GoBack()
        : verb == u"write"_s   ? (void)anim.WritePngs(folder.Path(u"к.x"_s), step)
                               : anim.Clean();
    }
    QString State(bool ofHai) const
    {
        const auto lines = [](const FrameList &list) {
            return u"%1 "_s.arg(list.Selected()) + list.Names().join(u' ');
        };
        QString state = (ofHai ? hai.HasUnsavedWork() : anim.HasUnsavedWork()) ? u"*"_s : u""_s;
        if (ofHai)
            state += lines(hai.List(HaiProject::Animation)) + u" / "_s + lines(hai.List(HaiProject::Store));
        else
            state += u"%1%2 x %3 "_s.arg(anim.IsGenerated() ? u"built "_s : u""_s)
                         .arg(anim.MainWidth())
                         .arg(anim.MainHeight()) +
                     lines(anim.List());
        return state.simplified();
    }
    // Pictures of one row: capitals are opaque, "r" translucent, dots empty.
    static std::vector<FrameBuf> Rows(const QString &words)
    {
        constexpr std::uint32_t Colours[] = {0, 0xFFFF0000, 0xFF00FF00, 0xFF0000FF, 0x82F10000};
        std::vector<FrameBuf> rows;
        for (const QString &word : words.split(u' '))
            rows.push_back(MakePicture(int(word.size()), 1,
                                       [&](int x, int) { return Colours[u".RGBr"_s.indexOf(word[x])]; }));
        return rows;
    }

    SampleFolder folder;
    HaiProject hai;
    AnimProject anim;
    FrameStep step = [](int, int) {};
    std::optional<std::int32_t> leftOut;
};

TEST_F(ProjectsTest, KeepTheirRules)
{
    for (const TableRow &row : ReadTable("anim/projects.txt", 2)) {
        Do(row.Text(0));
        EXPECT_EQ(row.Text(1), State(row.Text(1).contains(u'/'))) << row.line;
    }
    EXPECT_EQ(QString(), hai.FileName());
    EXPECT_FALSE(hai.AddFiles(HaiProject::Store, Paths({u"missing.png"_s, u"noise.gi"_s}), step));
    EXPECT_EQ(SaveEnd::Failed, anim.WritePngs(folder.Path(u"none\\a"_s), step));
}

// Saved and opened, of the usual size and of another, and copied to and fro.
TEST_F(ProjectsTest, HaiFramesStayAsTheyAre)
{
    Do(u"add 0 0.png small.png 2.png"_s);
    Do(u"save"_s);
    const std::string file = folder.Get("a.hai");
    EXPECT_EQ(52276U, file.size());
    for (const std::int32_t side : {128, 64}) {
        const std::string numbers = {char(side), 0, 0, 0, char(side), 0, 0, 0};
        folder.Put("a.hai", std::string(file).replace(4, 8, numbers));
        for (const char *what : {"clean 1", "open", "copyall 0", "copyall 1"})
            Do(QLatin1String(what));
        EXPECT_TRUE(leftOut == 0 && hai.FileName() == u"a.hai"_s &&
                    hai.Shown(HaiProject::Animation).Width == side);
        const auto frames = hai.List(HaiProject::Animation).Frames();
        for (std::size_t i = 3; i < 6; i++) {
            EXPECT_EQ(file.substr(52 + (i - 3) * 17408, std::size_t(side * side)), TextOf(frames[i].Pixels));
            EXPECT_EQ(frames[i - 3].Palette, frames[i].Palette);
        }
    }
    EXPECT_EQ(SaveEnd::Failed, hai.Save(folder.Path(u"none\\a.hai"_s), step));
    EXPECT_TRUE(hai.HasUnsavedWork() && !hai.Open(folder.Path(u"missing.hai"_s), step));
    EXPECT_EQ(6, hai.List(HaiProject::Animation).Count());
    EXPECT_EQ(0, hai.Open(folder.Path(u"noise.gi"_s), step)); // no frames that can be
    folder.Put("a.hai", std::string(file).replace(4, 8, std::string("\0!\0\0\0!\0\0", 8))); // 8448 x 8448
    EXPECT_EQ(3, hai.Open(folder.Path(u"a.hai"_s), step));
    EXPECT_TRUE(hai.List(HaiProject::Animation).IsEmpty());
}

// And written; drawn over the first picture, as an animation, they show the others but for what is counted.
TEST_F(ProjectsTest, FramesAreWhatChanges)
{
    for (const TableRow &row : ReadTable("anim/unshown.txt", 4)) {
        const std::vector<FrameBuf> pictures = Rows(row.Text(0)), built = Rows(row.Text(1));
        anim.Clean();
        for (const FrameBuf &picture : pictures)
            EXPECT_TRUE(anim.AddFrame(picture, {}));
        Do(u"build"_s);
        Do(u"write"_s);
        EXPECT_TRUE(anim.NotShown().Pixels == row.Int(2) && anim.NotShown().Frames == row.Int(3)) << row.line;
        std::vector<FrameBuf> frames(anim.Frames().begin(), anim.Frames().end());
        for (FrameBuf &frame : frames)
            frame.GiType = frame.TransType = TransTypeOf(frame.Pixels);
        const GaiBox box = {0, 0, anim.MainWidth(), anim.MainHeight()};
        FrameBuf canvas = pictures[0];
        const FrameSet shown = OpenGaiDocument(WriteGai(box, frames, {.Background = true}), canvas, {});
        for (std::size_t i = 0; i < built.size(); i++) {
            anim.SetCurrent(std::int32_t(i));
            EXPECT_EQ(built[i].Pixels, anim.ShownFrame()->Pixels) << row.line << i;
            EXPECT_EQ(built[i].Pixels, ReadPng(folder.Path(u"к_00%1.png"_s.arg(i))).Pixels);
            EXPECT_TRUE(row.Int(2) > 0 || pictures[i].Pixels == DibToFrameBuf(shown.Pictures.at(i)).Pixels)
                << row.line << i;
        }
    }
}

TEST_F(ProjectsTest, NothingElseChangesThemDuringAJob)
{
    const QString haiVerbs = u"add 1 0.png,copy 0,copyall 0,remove 0,move 1,clean 0,clean 1,open,save"_s;
    QString told;
    const FrameStep quiet = step, meddle = [&](int done, int all) {
        told += u"%1/%2 "_s.arg(done).arg(all);
        const bool ofHai = hai.IsBusy();
        const QString before = State(ofHai),
                      verbs = ofHai ? haiVerbs : u"take - 0.png,drop,shift 1,build,back,write,empty"_s;
        for (const QString &what : verbs.split(u','))
            Do(what);
        EXPECT_FALSE(ofHai ? hai.AddFrame(HaiProject::Store, MakeSprite(1), {})
                           : anim.AddFrame(MakeSprite(1), {}));
        EXPECT_EQ(before, State(ofHai));
        hai.Stop();
        anim.Stop();
    };
    // Each is done, and stopped after its first item.
    for (const char *what : {"add 0 0.png 1.png 2.png", "copyall 0", "save", "open"})
        for (const FrameStep &heard : {quiet, meddle}) {
            step = heard;
            Do(QLatin1String(what));
        }
    EXPECT_EQ(u"-1 / 0 0.png 1.png 2.png 0.png 0.png"_s, State(true));
    EXPECT_EQ(QString(), hai.FileName());
    step = quiet;
    Do(u"copyall 1"_s);
    EXPECT_TRUE(leftOut == 0 && SaveEnd::Stopped == hai.Save(folder.Path(u"b.hai"_s), meddle));
    EXPECT_EQ("", folder.Get("b.hai"));
    for (const char *what : {"take - 0.png 1.png", "build", "back", "build", "write"})
        for (const FrameStep &heard : {meddle, quiet}) {
            step = heard;
            Do(QLatin1String(what));
        }
    EXPECT_EQ(u"built 37 x 23 0 0.png 0.png 1.png"_s, State(false));
    EXPECT_EQ(u"1/3 1/4 1/4 1/4 1/5 1/2 1/2 1/2 1/3 "_s, told);
}

} // namespace
} // namespace wb::test
