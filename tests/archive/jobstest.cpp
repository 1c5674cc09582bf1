#include "archive/packjob.h"
#include "archive/unpackjob.h"

#include "madebytes.h"
#include "support/fulldisk.h"
#include "support/madepkg.h"

#include <map>

using namespace Qt::StringLiterals;
using namespace wb;
using namespace wb::test;

namespace
{

using Tree = std::map<std::string, std::string>; // what a folder holds by its path; a folder holds "/"

// Runs jobs in a folder of its own and keeps what they tell.
class Jobs : public testing::Test, public Progress
{
protected:
    void ProgressStart(std::int32_t maximum, const QString & /*text*/) override
    {
        last = 0;
        limit = maximum;
        Event();
    }
    void ProgressStep(std::int32_t value, const QString &text) override
    {
        EXPECT_LE(last, value);
        EXPECT_LE(value, limit);
        last = value;
        lastText = text;
        Event();
    }
    void ProgressWait() override
    {
        ++waits;
        Event();
    }
    void ProgressClear() override { limit = 0; }
    void Event()
    {
        ++events;
        if (onEvent)
            onEvent();
    }

    template <typename Job, typename Order>
    JobEnd Run(Job &job, const Order &order)
    {
        lines.clear();
        boxes.clear();
        events = waits = 0;
        running = &job;
        QString work;
        const JobEnd end = job.Run(order, {[this](const QString &line) { lines.push_back(line); },
                                           [&work](const QString &path) { work = path; },
                                           [this](const QString &text) { boxes.push_back(text); }});
        EXPECT_TRUE(work.isEmpty() && limit == 0 && !job.IsBusy() && !job.IsPaused());
        return end;
    }
    QString Made() const { return folder.Path(u"made.pkg"_s); }
    JobEnd Pack(int threads = 1, bool storeOnly = false)
    {
        PackJob job(*this, threads);
        return Run(job, PackOrder{Made(), folder.Path(u"tree"_s), storeOnly});
    }
    JobEnd Unpack(const UnpackOrder &order)
    {
        UnpackJob job(*this);
        return Run(job, order);
    }
    JobEnd Unpack() { return Unpack({Made(), folder.Path(u"out"_s), {}, 0, {}}); }

    void Remove(const char *name) const { std::filesystem::remove_all(folder.Native(name)); }
    Tree TreeOf(const char *name) const
    {
        Tree tree;
        for (const auto &entry : std::filesystem::recursive_directory_iterator(folder.Native(name))) {
            const std::string path = std::filesystem::relative(entry.path(), folder.Native());
            tree[path.substr(path.find('/') + 1)] = entry.is_directory() ? "/" : folder.Get(path);
        }
        return tree;
    }
    // Gives what comes back of it.
    Tree MakeSmallTree() const
    {
        const Tree tree = {{"Gfx", "/"},
                           {"Gfx/X.PNG", std::string(130, 'B')},
                           {"пусто", "/"},
                           {"a.txt", std::string(200, 'A')},
                           {std::string(63, 'l'), "12"},
                           {std::string(63, 'm'), "12"},
                           {"nothing", ""},
                           {"Файл.txt", "abc"}};
        for (const auto &[path, bytes] : tree)
            bytes == "/" ? folder.MakeFolder("tree/" + path) : folder.Put("tree/" + path, bytes);
        const std::string cut = folder.Native("tree/" + std::string(63, 'm'));
        std::filesystem::rename(cut, cut + "mmmmmmm");
        folder.Put("tree/.hidden");
        return tree;
    }
    void ExpectLog(const std::string &name) const
    {
        EXPECT_EQ(ReadFixture(name), lines.join(u'\n').toStdString() + '\n');
    }

    TempFolder folder;
    std::function<void()> onEvent;
    ArchiveJob *running = nullptr;
    QStringList lines, boxes;
    int events = 0, waits = 0;
    std::int32_t last = 0, limit = 0;
    QString lastText;
};

const QString Aborted = u"Прервано пользователем."_s;

TEST_F(Jobs, PackAndUnpackASmallTree)
{
    const Tree tree = MakeSmallTree();
    EXPECT_EQ(JobEnd::Done, Pack());
    EXPECT_EQ(TextOf(ReadHex("archive/smalltree.txt")), folder.Get("made.pkg"));
    ExpectLog("archive/packlog.txt");
    EXPECT_EQ("Запаковка: 8 / 8", lastText.toStdString());
    folder.MakeFolder("out");
    folder.Put("out/A.TXT", "older");
    EXPECT_EQ(JobEnd::Done, Unpack());
    ExpectLog("archive/unpacklog.txt");
    EXPECT_EQ("Распаковка: 8 / 8", lastText.toStdString());
    EXPECT_EQ(std::string(200, 'A'), folder.Get("out/A.TXT")) << "an older file is replaced in any case";
    Remove("out");
    EXPECT_EQ(JobEnd::Done, Unpack());
    EXPECT_EQ(tree, TreeOf("out"));

    FileError error = {};
    const PkgHandle archive = PkgOpenRead(Made(), error);
    EXPECT_EQ(JobEnd::Done, Unpack({{}, folder.Path(u"new\\Gfx"_s), archive, 1122, u"Gfx\\"_s}));
    EXPECT_EQ("FILE:  Gfx\\X.PNG\nЗавершено.", lines.join(u'\n').toStdString());
    EXPECT_EQ(Tree({{"Gfx", "/"}, {"Gfx/X.PNG", std::string(130, 'B')}}), TreeOf("new"));
}

TEST_F(Jobs, GiveTheSameBytesWithAnyNumberOfThreads)
{
    for (const char *name : {"tree/f/", "tree/f/.hidden/", "tree/Папка/", "tree/f/?*/"}) {
        folder.MakeFolder(name);
        for (const std::size_t size : {0, 1, 127, 128, 65536, 65537, 200'000})
            for (const bool isNoise : {false, true})
                folder.Put(name + std::to_string(size) + (isNoise ? "ф?*.gi" : ".gi"),
                           TextOf(MakeBytes(size, isNoise)));
    }
    EXPECT_EQ(JobEnd::Done, Pack(4, true));
    EXPECT_TRUE(lines.filter(u"ZL02"_s).isEmpty());
    EXPECT_EQ(u"Итог сжатия: 100%"_s, lines[lines.size() - 2]);
    EXPECT_EQ(JobEnd::Done, Unpack());
    EXPECT_EQ(TreeOf("tree"), TreeOf("out"));
    std::string first;
    for (const int threads : {1, 2, 4, 4}) {
        EXPECT_EQ(JobEnd::Done, Pack(threads));
        first = first.empty() ? folder.Get("made.pkg") : first;
        EXPECT_TRUE(first == folder.Get("made.pkg")) << threads;
    }
    Remove("out");
    EXPECT_EQ(JobEnd::Done, Unpack());
    EXPECT_EQ(TreeOf("tree"), TreeOf("out"));
}

TEST_F(Jobs, TellHowTheyEnd)
{
    folder.MakeFolder("empty");
    folder.Put("file");
    folder.MakePipe("pipe");
    MakeSmallTree();
    Pack();
    for (const TableRow &row : ReadTable("archive/jobends.txt", 5)) {
        const auto text = [&](std::size_t field) { return row.Text(field).replace(u'@', folder.Path()); };
        PackJob packing(*this, 2);
        const JobEnd end = row.fields[0] == "pack" ? Run(packing, PackOrder{text(1), text(2)})
                                                   : Unpack({text(1), text(2), {}, 0, {}});
        EXPECT_EQ(row.fields[3].empty() ? JobEnd::Done : JobEnd::Failed, end) << row.line;
        EXPECT_EQ(row.fields[3], boxes.join(u'|').toStdString()) << row.line;
        EXPECT_EQ(text(4).toStdString(), lines.back().trimmed().toStdString()) << row.line;
    }
    EXPECT_EQ(16U, folder.Get("x.pkg").size());
}

TEST_F(Jobs, PackUntilAborted)
{
    const Tree tree = MakeSmallTree();
    JobEnd end = JobEnd::Aborted;
    for (int n = 1; end == JobEnd::Aborted; ++n) {
        Remove("made.pkg");
        onEvent = [&] { events == n ? running->Abort() : void(); };
        end = Pack(2);
        EXPECT_EQ(end == JobEnd::Aborted, lines.back() == Aborted) << n;
        FileError error = {};
        const PkgHandle archive = PkgOpenRead(Made(), error);
        ASSERT_NE(nullptr, archive) << n;
        qsizetype reached = 0;
        for (const PkgEntry &entry : PkgReadTree(*archive, archive->RootOffset)) {
            ByteArray data;
            EXPECT_TRUE(PkgReadEntryData(*archive, data, entry)) << n;
            reached += entry.Offset > 0 ? 1 : 0;
            EXPECT_TRUE(entry.Offset > 0 || (entry.Size == 0 && entry.PackedSize == 0)) << n;
            if (entry.Offset > 0 && entry.Type != PkgFolder) {
                EXPECT_EQ(tree.at(entry.FullPath().replace(u'\\', u'/').toStdString()), TextOf(data)) << n;
            }
        }
        EXPECT_EQ(lines.filter(u": "_s).size(), reached + (end == JobEnd::Done ? 1 : 0)) << n;
        EXPECT_TRUE(end == JobEnd::Aborted || n > 10) << n;
    }
}

TEST_F(Jobs, UnpackUntilAborted)
{
    const Tree tree = MakeSmallTree();
    Pack();
    JobEnd end = JobEnd::Aborted;
    for (int n = 1; end == JobEnd::Aborted; ++n) {
        Remove("out");
        onEvent = [&] { events == n ? running->Abort() : void(); };
        end = Unpack();
        EXPECT_EQ(end == JobEnd::Aborted, lines.back() == Aborted) << n;
        const Tree out = n == 1 ? Tree() : TreeOf("out");
        EXPECT_TRUE(std::ranges::includes(tree, out)) << n;
        EXPECT_EQ(lines.filter(u": "_s).size(), out.size()) << n;
        EXPECT_TRUE(end == JobEnd::Aborted || out == tree) << n;
    }
}

TEST_F(Jobs, WaitWhilePaused)
{
    MakeSmallTree();
    for (const bool isAborting : {false, true}) {
        QStringList linesThen;
        onEvent = [&] {
            if (events == 4) {
                running->TogglePause();
                linesThen = lines;
            } else if (waits == 3 && running->IsPaused()) {
                EXPECT_EQ(linesThen, lines);
                isAborting ? running->Abort() : running->TogglePause();
            }
        };
        EXPECT_EQ(isAborting ? JobEnd::Aborted : JobEnd::Done, Pack());
        EXPECT_EQ(3, waits);
    }
}

TEST_F(Jobs, LoseAnOlderArchiveOnlyToAWholeOne)
{
    MakeSmallTree();
    folder.Put("made.pkg", "older");
    for (const rlim_t room : {0, 3, 1000, 1300, 1484})
        OnAFullDisk(room, [&] {
            EXPECT_EQ(JobEnd::Failed, Pack(2)) << room;
            EXPECT_EQ(QStringList(u"File access denied."_s), boxes) << room;
            EXPECT_TRUE(lines.back().startsWith(u"ERR: "_s)) << room;
            EXPECT_EQ("older", folder.Get("made.pkg")) << room;
            EXPECT_EQ(2U, folder.EntryCount()) << room;
        });
    onEvent = [&] { running->Abort(); };
    for (const char *name : {"made (прервано).pkg", "made (прервано 2).pkg"}) {
        EXPECT_EQ(JobEnd::Aborted, Pack()) << name;
        EXPECT_TRUE(lines[0].endsWith(QString::fromUtf8(name))) << name;
        EXPECT_EQ("older", folder.Get("made.pkg")) << name;
        EXPECT_EQ("\4", folder.Get(name).substr(0, 1));
    }
}

TEST_F(Jobs, NeverWriteOutsideTheTarget)
{
    for (const char *name : {"out", "out/here", "outside"})
        folder.MakeFolder(name);
    folder.Put("outside/file");
    const std::pair<const char *, const char *> links[] = {
        {"../outside", "out/LINK"}, {"../outside/file", "out/filelink"}, {"../outside/new", "out/nowhere"}};
    for (const auto &[target, name] : links)
        std::filesystem::create_symlink(target, folder.Native(name));
    std::vector<MadeFile> files;
    for (const char *name :
         {"..", ".", "", "a\\b", "../x", "/x", "C:", "t\t", "filelink", "nowhere", "here", "ok"})
        files.push_back({QString::fromLatin1(name), "evil"});
    folder.Put("made.pkg", MakePkg({{}, files, {{u".."_s, files}, {u"link"_s, files}}}));
    EXPECT_EQ(JobEnd::Done, Unpack());
    ExpectLog("archive/unsafelog.txt");
    EXPECT_EQ(Tree({{"file", "x"}}), TreeOf("outside"));
    EXPECT_EQ(3U, folder.EntryCount());
    EXPECT_EQ("evil", folder.Get("out/ok"));
}

TEST_F(Jobs, TellOfNamesThatAnArchiveDoesNotKeep)
{
    folder.MakeFolder("tree/f");
    const std::string same(63, 's');
    for (const std::string &name : {same + "1", same + "2", std::string("日.txt"), std::string("a\\b"),
                                    std::string("c:d"), std::string("\xEF\xF0"), std::string("п")})
        folder.Put("tree/f/" + name);
    for (const char *target : {".", "..", "f", "none"})
        std::filesystem::create_symlink(target, folder.Native(std::string("tree/l") + target));
    EXPECT_EQ(JobEnd::Done, Pack());
    ExpectLog("archive/nameslog.txt");
}

TEST_F(Jobs, UnpackAnythingWithinTheTarget)
{
    const Tree tree = MakeSmallTree();
    const ByteArray whole = ReadHex("archive/smalltree.txt");
    std::minstd_rand random(1);
    for (std::size_t run = 0; run < whole.size() + 1000; ++run) {
        const bool isCut = run < whole.size();
        ByteArray bytes(whole.begin(), isCut ? whole.begin() + std::ptrdiff_t(run) : whole.end());
        if (!isCut)
            Damage(bytes, random);
        for (const char *name : {"out", "made.pkg"}) // rewriting a file is slower
            Remove(name);
        folder.Put("made.pkg", TextOf(bytes));
        EXPECT_NE(JobEnd::Aborted, Unpack()) << run;
        EXPECT_EQ(3U, folder.EntryCount()) << run;
        for (const auto &[path, content] : isCut ? TreeOf("out") : Tree())
            EXPECT_TRUE(content == tree.at(path) ||
                        lines.contains(u"ERR: Файл в архиве повреждён: "_s +
                                       QString::fromStdString(path).replace(u'/', u'\\')))
                << run << path;
    }
}

TEST(SkipCompression, KnowsWhatShrinks)
{
    for (const TableRow &row : ReadTable("archive/skips.txt", 3))
        EXPECT_EQ(row.Int(2) != 0, SkipCompression(row.Text(0), row.Number(1))) << row.line;
}

} // namespace
