#include "anim/gaiproject.h"
#include "common/bytes.h"
#include "common/files.h"
#include "gfx/pixels.h"
#include "support/samplefolder.h"
#include "support/table.h"

namespace wb::test
{
namespace
{

using namespace Qt::StringLiterals;

class GaiProjectTest : public testing::Test
{
protected:
    void SetUp() override
    {
        folder.AddSprites();
        FrameBuf placed = MakeSprite(1);
        placed.X = placed.Y = 6;
        folder.AddGi("at.gi", placed, 2, 1);
    }
    bool Add(const QString &names, const FrameStep &step)
    {
        QStringList paths = names.split(u' ');
        for (QString &path : paths)
            path = folder.Path(path);
        return project.AddFiles(paths, step);
    }
    void Do(const QString &what)
    {
        static const QStringList fields = u"StartX StartY Width Height X Y Delay"_s.split(u' ');
        const QString verb = what.section(u' ', 0, 0), name = what.section(u' ', 1, 1);
        const auto field = GaiProject::Field(fields.indexOf(name));
        verb == u"add"_s        ? (void)Add(name, quiet)
        : verb == u"remove"_s   ? project.RemoveSelected()
        : verb == u"move"_s     ? project.MoveSelected(name.toInt())
        : verb == u"select"_s   ? project.Select(name.toInt())
        : verb == u"current"_s  ? project.SetCurrent(name.toInt())
        : verb == u"type"_s     ? project.SetGiType(name.toInt())
        : verb == u"copytype"_s ? project.CopyTypeToAll()
        : verb == u"set"_s      ? project.SetValue(field, what.section(u' ', 2).toLongLong())
        : verb == u"up"_s       ? project.StepUp(field)
        : verb == u"down"_s     ? project.StepDown(field)
        : verb == u"copy"_s     ? project.CopyToAll(field)
                                : project.Clean();
    }
    QString State() const
    {
        const auto frames = project.List().Frames();
        const GaiBox &box = project.Box();
        QString state = project.HasUnsavedWork() ? u"*"_s : QString();
        for (int number : {project.List().Selected(), project.List().Current(), box.StartX, box.StartY,
                           box.Width, box.Height})
            state += QString::number(number) + u' ';
        QStringList shown;
        for (std::size_t i = 0; i < frames.size(); i++) {
            shown << project.List().Names()[qsizetype(i)];
            for (int number : {frames[i].X, frames[i].Y, frames[i].Delay, frames[i].GiType})
                shown.back() += u' ' + QString::number(number);
        }
        return (state + u"| "_s + shown.join(u", "_s)).simplified();
    }

    SampleFolder folder;
    GaiProject project;
    const FrameStep quiet = [](int, int) {};
};

TEST_F(GaiProjectTest, KeepsItsRules)
{
    for (const TableRow &row : ReadTable("anim/gaiproject.txt", 3)) {
        Do(row.Text(0));
        EXPECT_EQ((row.Text(1) + u" | "_s + row.Text(2)).simplified(), State()) << row.line;
    }
}

TEST_F(GaiProjectTest, OpensWhatItSaved)
{
    Add(u"0.png 2.png at.gi"_s, quiet);
    project.SetOptions({true, true, false});
    EXPECT_EQ(SaveEnd::Failed, project.Save(folder.Path(u"none\\a.gai"_s), quiet));
    EXPECT_TRUE(project.HasUnsavedWork());
    QString steps, path = folder.Path(u"boom.gai"_s);
    const auto note = [&](int done, int all) { steps += u"%1/%2 "_s.arg(done).arg(all); };
    EXPECT_TRUE(project.Save(path, note) == SaveEnd::Saved && !project.HasUnsavedWork());
    EXPECT_EQ(TextOf(WriteGai(project.Box(), project.List().Frames(), {true, true})), folder.Get("boom.gai"));
    project.SetOptions({});
    EXPECT_TRUE(project.HasUnsavedWork() && project.Open(path, note));
    EXPECT_EQ(u"1/3 2/3 3/3 1/3 2/3 3/3 "_s, steps);
    EXPECT_EQ(u"0 0 0 0 37 23 | boom_000.gi 0 0 50 0, boom_001.gi 0 0 50 2, boom_002.gi 0 0 50 1"_s, State());
    EXPECT_TRUE(project.Options().Background && project.FileName() == u"boom.gai"_s);
    EXPECT_EQ(MakeSprite(2).Pixels, project.List().Frames()[1].Pixels);
    EXPECT_EQ(0, project.Check().Count); // each can be written as its type again
    ByteArray file = WriteGai(project.Box(), project.List().Frames(), {});
    PutLong(file, 28, 2); // a flag other than 1 is not on
    folder.Put("boom.gai", TextOf(file));
    EXPECT_TRUE(project.Open(path, note) && !project.Options().Background);
    EXPECT_FALSE(project.Open(folder.Path(u"missing.gai"_s), note) || project.List().Count() != 3);
    EXPECT_TRUE(project.Open(folder.Path(u"noise.gi"_s), note));
    EXPECT_EQ(u"-1 0 0 0 300 300 |"_s, State());
}

// A type for transparent pictures holds opaque ones too; types above 4 can't be written.
TEST_F(GaiProjectTest, SavesEveryFrameThatItOpened)
{
    std::vector<FrameBuf> frames(5, MakeSprite(0));
    for (int type = 0; type <= 4; type++)
        frames[type].X = -5, frames[type].GiType = type, frames[type].TransType = type > 0;
    ByteArray file = WriteGai({-5, 0, 37, 23}, frames, {});
    const QString path = folder.Path(u"a.gai"_s);
    const auto saved = [&] {
        folder.Put("a.gai", TextOf(file));
        EXPECT_TRUE(project.Open(path, quiet) == 0 && project.Save(path, quiet) == SaveEnd::Saved);
        return folder.Get("a.gai");
    };
    EXPECT_TRUE(TextOf(file) == saved());
    PutLong(file, GetLong(file, 48) + 40, 6);
    EXPECT_NE(0, GetLong(BytesOf(saved()), 52)); // there are bytes
    EXPECT_TRUE(project.GiType() < 5 && project.Check().Count == 0);
    Do(u"set StartX -17"_s);
    EXPECT_EQ(-17, project.Box().StartX);
    Do(u"set StartX -100000"_s);
    EXPECT_EQ(-99999, project.Box().StartX);
}

TEST_F(GaiProjectTest, NothingElseChangesItDuringAJob)
{
    EXPECT_TRUE(Add(u"0.png missing.png"_s, quiet) && !Add(u"noise.gi 1.png"_s, quiet));
    const FrameBuf picture = MakeSprite(1);
    const auto meddle = [&](int, int) {
        const QString before = State();
        for (const char *what :
             {"remove", "move 1", "set X 9", "copy X", "type 3", "copytype", "clean", "add 2.png"})
            Do(QLatin1String(what));
        project.AddPictures({picture}, {{}}, quiet);
        project.AddGis({picture}, {{}}, quiet);
        EXPECT_FALSE(project.Open(folder.Path(u"out.gai"_s), {}));
        EXPECT_EQ(SaveEnd::Failed, project.Save(folder.Path(u"out.gai"_s), {}));
        EXPECT_TRUE(project.IsBusy() && before == State());
        project.Stop();
    };
    const QString path = folder.Path(u"out.gai"_s);
    EXPECT_EQ(SaveEnd::Stopped, project.Save(path, meddle));
    EXPECT_TRUE(project.HasUnsavedWork() && !FileExists(path));
    EXPECT_EQ(SaveEnd::Saved, project.Save(path, quiet));
    Add(u"2.png 0.png"_s, meddle);
    EXPECT_EQ(u"0.png 1.png 2.png"_s, project.List().Names().join(u' '));
    project.AddPictures({picture, {}, picture}, {u"p"_s, {}, u"q"_s}, quiet);
    EXPECT_EQ(u"0.png 1.png 2.png p q"_s, project.List().Names().join(u' '));
    project.Open(path, meddle);
    EXPECT_EQ(QString(), project.List().Names().join(u' ') + project.FileName()); // not the first of two
}

} // namespace
} // namespace wb::test
