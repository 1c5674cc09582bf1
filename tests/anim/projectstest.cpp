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
    void DoHai(const QString &what)
    {
        const QStringList words = what.split(u' ');
        const QString path = folder.Path(u"a.hai"_s);
        const auto list = HaiProject::ListName(words.value(1).toInt());
        words[0] == u"add"_s       ? (void)hai.AddFiles(list, Paths(words.mid(2)), step)
        : words[0] == u"copy"_s    ? hai.CopySelected(list)
        : words[0] == u"copyall"_s ? hai.CopyAll(list, step)
        : words[0] == u"remove"_s  ? hai.RemoveSelected(list)
        : words[0] == u"move"_s    ? hai.MoveSelected(words[1].toInt())
        : words[0] == u"save"_s    ? (void)hai.Save(path, step)
        : words[0] == u"open"_s    ? void(leftOut = hai.Open(path, step))
                                   : hai.Clean(list);
    }
    void DoAnim(const QString &what)
    {
        const QStringList words = what.split(u' ');
        words[0] == u"add"_s      ? (void)anim.AddFiles(Paths(words.mid(1)), step)
        : words[0] == u"remove"_s ? anim.RemoveSelected()
        : words[0] == u"move"_s   ? anim.MoveSelected(words[1].toInt())
        : words[0] == u"build"_s  ? anim.Build(step)
        : words[0] == u"back"_s   ? anim.GoBack()
        : words[0] == u"save"_s   ? (void)anim.WritePngs(folder.Path(u"к.x"_s), step)
                                  : anim.Clean();
    }
    static QString StateOf(bool isUnsaved, const QString &what, const FrameList &list)
    {
        return (isUnsaved ? u"*"_s : QString()) + what + QString::number(list.Selected()) + u' ' +
               list.Names().join(u' ');
    }
    QString HaiState() const
    {
        return StateOf(hai.HasUnsavedWork(), {}, hai.List(HaiProject::Animation)).trimmed() + u" | "_s +
               StateOf(false, {}, hai.List(HaiProject::Store)).trimmed();
    }
    QString AnimState() const
    {
        const QString size = u"%1 x %2 "_s.arg(anim.MainWidth()).arg(anim.MainHeight());
        return StateOf(anim.HasUnsavedWork(), (anim.IsGenerated() ? u"built "_s : QString()) + size,
                       anim.List())
            .trimmed();
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
    for (const TableRow &row : ReadTable("anim/haiproject.txt", 3)) {
        DoHai(row.Text(0));
        EXPECT_EQ((row.Text(1) + u" | "_s + row.Text(2)).simplified(), HaiState()) << row.line;
    }
    EXPECT_EQ(QString(), hai.FileName());
    for (const TableRow &row : ReadTable("anim/animproject.txt", 2)) {
        DoAnim(row.Text(0));
        EXPECT_EQ(row.Text(1), AnimState()) << row.line;
    }
}

// Saved and opened, of the usual size and of another, and copied to and fro.
TEST_F(ProjectsTest, HaiFramesStayAsTheyAre)
{
    DoHai(u"add 0 0.png small.png 2.png"_s);
    EXPECT_FALSE(hai.AddFiles(HaiProject::Store, Paths({u"missing.png"_s, u"noise.gi"_s}), step));
    DoHai(u"save"_s);
    const std::string file = folder.Get("a.hai");
    EXPECT_EQ(52276U, file.size());
    for (const std::int32_t side : {128, 64}) {
        const std::string numbers = {char(side), 0, 0, 0, char(side), 0, 0, 0};
        folder.Put("a.hai", std::string(file).replace(4, 8, numbers));
        for (const char *what : {"clean 1", "open", "copyall 0", "copyall 1"})
            DoHai(QLatin1String(what));
        EXPECT_TRUE(leftOut == 0 && hai.FileName() == u"a.hai"_s);
        const auto frames = hai.List(HaiProject::Animation).Frames();
        ASSERT_EQ(6U, frames.size());
        for (std::size_t i = 0; i < 6; i++) {
            const FrameBuf &stored = hai.List(HaiProject::Store).Frames()[i % 3];
            EXPECT_TRUE(frames[i].Pixels == stored.Pixels && frames[i].Palette == stored.Palette);
            const std::size_t start = 52 + i % 3 * 17408;
            EXPECT_EQ(file.substr(start, std::size_t(side * side)), TextOf(stored.Pixels)) << i;
            EXPECT_EQ(file.substr(start + std::size_t(side * side), 1024), TextOf(stored.Palette)) << i;
        }
        EXPECT_EQ(side, hai.Shown(HaiProject::Animation).Width);
    }
    EXPECT_EQ(SaveEnd::Failed, hai.Save(folder.Path(u"none\\a.hai"_s), step));
    EXPECT_TRUE(hai.HasUnsavedWork() && !hai.Open(folder.Path(u"missing.hai"_s), step));
    EXPECT_EQ(6, hai.List(HaiProject::Animation).Count());
    EXPECT_EQ(0, hai.Open(folder.Path(u"noise.gi"_s), step)); // no frames that can be
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
        DoAnim(u"build"_s);
        DoAnim(u"save"_s);
        EXPECT_TRUE(anim.NotShown().Pixels == row.Int(2) && anim.NotShown().Frames == row.Int(3)) << row.line;
        std::vector<FrameBuf> frames(anim.Frames().begin(), anim.Frames().end());
        for (FrameBuf &frame : frames)
            frame.GiType = frame.TransType = TransTypeOf(frame);
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
    EXPECT_EQ(SaveEnd::Failed, anim.WritePngs(folder.Path(u"none\\a"_s), step));
}

TEST_F(ProjectsTest, NothingElseChangesThemDuringAJob)
{
    QString told;
    const FrameStep quiet = step, meddle = [&](int done, int all) {
        told += u"%1/%2 "_s.arg(done).arg(all);
        const QString before = HaiState() + AnimState();
        for (const char *what : {"add 1 0.png", "copy 0", "copyall 0", "remove 0", "move 1", "clean 0",
                                 "clean 1", "open", "build", "back", "save"})
            hai.IsBusy() ? DoHai(QLatin1String(what)) : DoAnim(QLatin1String(what));
        EXPECT_FALSE(hai.IsBusy() ? hai.AddFrame(HaiProject::Store, MakeSprite(1), {})
                                  : anim.AddFrame(MakeSprite(1), {}));
        EXPECT_EQ(before, HaiState() + AnimState());
        hai.Stop();
        anim.Stop();
    };
    // Each is done, and then stopped after its first item.
    for (const char *what : {"add 0 0.png 1.png 2.png", "copyall 0", "save", "open"})
        for (const FrameStep &heard : {quiet, meddle}) {
            step = heard;
            DoHai(QLatin1String(what));
        }
    EXPECT_EQ(u"0 a.hai (000) | 0 0.png 1.png 2.png 0.png 0.png"_s, HaiState());
    EXPECT_TRUE(leftOut == 3 && SaveEnd::Stopped == hai.Save(folder.Path(u"b.hai"_s), meddle));
    EXPECT_EQ("", folder.Get("b.hai"));
    for (const char *what : {"add 0.png 1.png", "build", "back", "build", "save"})
        for (const FrameStep &heard : {meddle, quiet}) {
            step = heard;
            DoAnim(QLatin1String(what));
        }
    EXPECT_EQ(u"built 37 x 23 0 0.png 0.png 1.png"_s, AnimState());
    EXPECT_EQ(u"1/3 1/4 1/4 1/4 1/1 1/2 1/2 1/2 1/3 "_s, told);
}

} // namespace
} // namespace wb::test
