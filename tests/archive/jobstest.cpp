#include "archive/packjob.h"
#include "archive/unpackjob.h"
#include "common/files.h"

#include "support/fulldisk.h"
#include "support/madepkg.h"
#include "support/table.h"

#include <QRegularExpression>

#include <map>
#include <random>
#include <sys/fsuid.h>

using namespace Qt::StringLiterals;
using namespace wb;

namespace
{

using Tree = std::map<std::string, std::string>; // what a folder holds by its path; a folder holds "/"

// Runs jobs in a folder of its own and keeps what they tell.
class Jobs : public testing::Test, public Progress
{
protected:
    void ProgressStart(std::int32_t maximum, const QString &text) override { Show(0, maximum, text); }
    void ProgressStep(std::int32_t value, const QString &text) override { Show(value, limit, text); }
    void ProgressWait() override { onEvent(++events); }
    void ProgressClear() override { limit = 0; }
    void Show(std::int32_t value, std::int32_t maximum, const QString &text)
    {
        EXPECT_TRUE((value == 0 || last <= value) && value <= maximum) << value;
        last = value;
        limit = maximum;
        lastText = text;
        onEvent(++events);
    }

    template <typename Job, typename Order>
    JobEnd Run(Job &&job, const Order &order)
    {
        events = 0;
        lines = boxes = {};
        running = &job;
        QString work;
        const JobEnd end = job.Run(order, {[this](const QString &line) { lines.push_back(line); },
                                           [&work](const QString &path) { work = path; },
                                           [this](const QString &text) { boxes.push_back(text); }});
        EXPECT_EQ(end == JobEnd::Aborted, lines.back() == u"Прервано пользователем."_s);
        EXPECT_TRUE(work.isEmpty() && limit == 0 && !job.IsBusy() && !job.IsPaused());
        return end;
    }
    JobEnd Pack(int threads = 1) { return Run(PackJob(*this, threads), packing); }
    JobEnd Unpack() { return Run(UnpackJob(*this), unpacking); }
    // All lines, and the last text of the progress.
    std::string Log() const { return (lines + QStringList{lastText, {}}).join(u'\n').toStdString(); }

    // What a table lists, and what comes back of it.
    Tree MakeFiles(const std::string &table = "archive/smalltreefiles.txt") const
    {
        Tree tree;
        for (const TableRow &row : ReadTable(table, 3)) {
            const std::string &path = row.fields[0], &bytes = row.fields[1];
            if (bytes.starts_with("-> "))
                std::filesystem::create_symlink(bytes.substr(3), folder.Native(path));
            else
                path.ends_with('/') ? folder.MakeFolder(path) : folder.Put(path, bytes);
            tree[row.fields[2]] = path.ends_with('/') ? "/" : bytes;
        }
        tree.erase("");
        return tree;
    }
    Tree TreeOf(const std::string &name) const
    {
        Tree tree;
        for (const auto &entry : std::filesystem::recursive_directory_iterator(folder.Native(name))) {
            const std::string path = std::filesystem::relative(entry.path(), folder.Native());
            tree[path.substr(name.size() + 1)] = entry.is_directory() ? "/" : folder.Get(path);
        }
        return tree;
    }
    // What the archive holds, but for what was not reached.
    Tree ArchiveTree() const
    {
        Tree tree;
        FileError error = {};
        const PkgHandle archive = PkgOpenRead(packing.ArchivePath, error);
        for (const PkgEntry &entry : PkgReadTree(*archive, 4)) {
            ByteArray data(entry.Type == PkgFolder ? 1 : 0, '/');
            EXPECT_TRUE(PkgReadEntryData(*archive, data, entry));
            EXPECT_TRUE(entry.Offset > 0 || (entry.Size == 0 && entry.PackedSize == 0));
            if (entry.Offset > 0)
                tree[entry.FullPath().replace(u'\\', u'/').toStdString()] = TextOf(data);
        }
        return tree;
    }
    void Remove(const char *name) const { std::filesystem::remove_all(folder.Native(name)); }

    TempFolder folder;
    PackOrder packing = {folder.Path(u"made.pkg"_s), folder.Path(u"tree"_s)};
    UnpackOrder unpacking = {packing.ArchivePath, folder.Path(u"out"_s), {}, 0, {}};
    std::function<void(int)> onEvent = [](int /*event*/) {};
    ArchiveJob *running = nullptr;
    QStringList lines, boxes;
    std::int32_t events = 0, last = 0, limit = 0;
    QString lastText;
};

TEST_F(Jobs, PackAndUnpackASmallTree)
{
    const Tree tree = MakeFiles();
    onEvent = [&](int event) { event == 9 || event == 12 ? running->TogglePause() : void(); };
    EXPECT_EQ(JobEnd::Done, Pack());
    EXPECT_EQ(tree, ArchiveTree());
    std::string bytes;
    for (const TableRow &row : ReadTable("archive/smalltree.txt", 2))
        bytes += row.fields[1];
    EXPECT_EQ(bytes, folder.Get("made.pkg"));
    EXPECT_EQ(ReadFixture("archive/packlog.txt"), Log());
    unpacking.TargetFolder = folder.Path(u"new\\one"_s);
    EXPECT_EQ(JobEnd::Done, Unpack());
    EXPECT_EQ(ReadFixture("archive/unpacklog.txt"), Log());
    EXPECT_EQ(tree, TreeOf("new/one"));
}

TEST_F(Jobs, GiveTheSameBytesWithAnyNumberOfThreads)
{
    std::minstd_rand random(1);
    std::string letters(200'000, ' ');
    std::ranges::generate(letters, [&random] { return char('a' + random() % 3); });
    for (const std::string name : {"tree/f/", "tree/f/.hidden/", "tree/Папка/", "tree/f/?*/"}) {
        folder.MakeFolder(name);
        for (const std::size_t size : {0, 1, 127, 128, 65536, 65537, 200'000})
            folder.Put(name + std::to_string(size) + "ф?*%2.gi", letters.substr(0, size));
    }
    std::string first;
    for (const int threads : {1, 2, 4, 4, -4}) {
        packing.StoreOnly = threads < 0;
        EXPECT_EQ(JobEnd::Done, Pack(std::abs(threads)));
        EXPECT_EQ(packing.StoreOnly, lines.filter(u"ZL02"_s).isEmpty());
        EXPECT_EQ(lines.filter(u"ZL02"_s), lines.filter(u"ф?*%2.gi (Сжатие: "_s));
        EXPECT_EQ(packing.StoreOnly, lines.contains(u"Итог сжатия: 100%"_s));
        first = first.empty() ? folder.Get("made.pkg") : first;
        EXPECT_NE(packing.StoreOnly, first == folder.Get("made.pkg")) << threads;
        EXPECT_EQ(JobEnd::Done, Unpack());
        EXPECT_EQ(TreeOf("tree"), TreeOf("out")) << threads;
        Remove("out");
    }
}

TEST_F(Jobs, TellHowTheyEnd)
{
    MakeFiles("archive/targetfiles.txt");
    folder.MakePipe("pipe");
    MakeFiles();
    Pack();
    for (const TableRow &row : ReadTable("archive/jobends.txt", 5)) {
        const auto text = [&](std::size_t field) { return row.Text(field).replace(u'@', folder.Path()); };
        packing = {text(1), text(2)};
        unpacking = {text(1), text(2), {}, 0, {}};
        const JobEnd end = row.fields[0] == "pack" ? Pack(2) : Unpack();
        EXPECT_EQ(row.fields[3].empty() ? JobEnd::Done : JobEnd::Failed, end) << row.line;
        EXPECT_EQ(row.fields[3], boxes.join(u'|').toStdString()) << row.line;
        EXPECT_EQ(text(4).toStdString(), lines.back().trimmed().toStdString()) << row.line;
    }
    EXPECT_EQ(16U, folder.Get("x.pkg").size());
}

// What was written before is whole, and the log tells just of that.
TEST_F(Jobs, EndWhereTheyAreAborted)
{
    const Tree tree = MakeFiles();
    int at = 0;
    QStringList linesThen;
    onEvent = [&](int event) {
        linesThen = event == at + 1 ? lines : linesThen;
        if (event == at)
            running->TogglePause();
        else if (event == at + 4)
            running->Abort();
        EXPECT_TRUE(event <= at || event > at + 4 || lines == linesThen) << at << ": it waits";
    };
    for (const bool isPacking : {true, false}) {
        JobEnd end = JobEnd::Aborted;
        for (at = 1; end == JobEnd::Aborted; ++at) {
            Remove(isPacking ? "made.pkg" : "out");
            folder.MakeFolder("out");
            end = isPacking ? Pack(2) : Unpack();
            const Tree reached = isPacking ? ArchiveTree() : TreeOf("out");
            EXPECT_TRUE(std::ranges::includes(tree, reached)) << at;
            EXPECT_EQ(lines.size() - (isPacking && end == JobEnd::Done ? 2 : 1), reached.size()) << at;
            EXPECT_TRUE(end == JobEnd::Aborted || reached == tree) << at;
        }
        EXPECT_GT(at, 10);
    }
}

TEST_F(Jobs, LoseAnOlderArchiveOnlyToAWholeOne)
{
    MakeFiles();
    folder.Put("made.pkg", "older");
    for (const rlim_t room : {0, 3, 1000, 1300, 1484})
        OnAFullDisk(room, [&] {
            EXPECT_EQ(JobEnd::Failed, Pack(2)) << room;
            EXPECT_EQ(QStringList(u"File access denied."_s), boxes) << room;
            EXPECT_TRUE(lines.back().startsWith(u"ERR: "_s)) << room;
            EXPECT_EQ("older", folder.Get("made.pkg")) << room;
            EXPECT_EQ(2U, folder.EntryCount()) << room;
        });
    folder.Put("tree/z.png");
    std::filesystem::resize_file(folder.Native("tree/z.png"), 2'147'483'644);
    EXPECT_EQ(JobEnd::Failed, Pack(2));
    EXPECT_EQ(QStringList(u"Archive is too large."_s), boxes);
    EXPECT_EQ("older", folder.Get("made.pkg"));
    onEvent = [&](int /*event*/) { running->Abort(); };
    EXPECT_EQ(JobEnd::Aborted, Pack());
    EXPECT_TRUE(lines[0].endsWith(u"made (прервано).pkg"_s));
    EXPECT_EQ("older", folder.Get("made.pkg"));
    EXPECT_EQ('\4', folder.Get("made (прервано).pkg")[0]);
}

// A file that can't be read is empty in the archive; a folder that can't be listed makes none at all.
TEST_F(Jobs, TellWhatCannotBeRead)
{
    MakeFiles();
    bool isWithinReach = false;
    const auto packWithout = [&](const char *path, int rights) {
        ::chmod(folder.Native(path).c_str(), mode_t(rights));
        const int user = ::setfsuid(65534); // the superuser may read anything
        isWithinReach = FolderExists(packing.Folder);
        const JobEnd end = Pack();
        ::setfsuid(uid_t(user));
        return end;
    };
    ::chmod(folder.Native().c_str(), 0777);
    for (const char *path : {"tree/a.txt", "tree/Gfx/X.PNG", "tree/пусто"})
        EXPECT_TRUE(packWithout(path, 0) == JobEnd::Done || !isWithinReach);
    if (!isWithinReach)
        GTEST_SKIP() << "the temporary folder is private";
    EXPECT_EQ(QStringList({u"ERR: Ошибка чтения файла: Gfx\\X.PNG"_s, u"ERR: Нет доступа к папке: пусто\\"_s,
                           u"FILE:  a.txt (Ошибка чтения файла)"_s}),
              lines.filter(QRegularExpression(u"чтения|доступа"_s)));
    const std::string older = folder.Get("made.pkg");
    EXPECT_EQ(JobEnd::Failed, packWithout("tree", 0311));
    EXPECT_EQ(QStringList(u"File access denied."_s), boxes);
    EXPECT_EQ(QStringList(u"Ошибка: неверный путь "_s + packing.Folder), lines);
    EXPECT_EQ(older, folder.Get("made.pkg"));
    ::chmod(folder.Native("tree").c_str(), 0700); // so that it can be removed
}

TEST_F(Jobs, LeaveTheArchiveOutOfItself)
{
    folder.MakeFolder("tree");
    folder.Put("tree/other.pkg");
    packing.ArchivePath = folder.Path(u"tree\\made.pkg"_s);
    for (int run = 0; run < 2; ++run) {
        EXPECT_EQ(JobEnd::Done, Pack());
        EXPECT_EQ(Tree({{"other.pkg", "x"}}), ArchiveTree()) << run;
    }
}

TEST_F(Jobs, NeverWriteOutsideTheTarget)
{
    const Tree outside = MakeFiles("archive/targetfiles.txt");
    std::vector<MadeFile> files;
    for (const TableRow &row : ReadTable("archive/unsafenames.txt", 2))
        files.push_back({row.Text(0), "evil"});
    folder.Put("made.pkg", MakePkg({{}, files, {{u".."_s, files}, {u"link"_s, files}}}));
    unpacking.TargetFolder = folder.Path(u"target"_s);
    EXPECT_EQ(JobEnd::Done, Unpack());
    EXPECT_EQ(ReadFixture("archive/unsafelog.txt"), Log());
    EXPECT_EQ(outside, TreeOf("outside"));
    EXPECT_EQ(3U, folder.EntryCount());
    EXPECT_EQ("evil", folder.Get("target/OK")) << "replaced in any case";
}

TEST_F(Jobs, TellOfNamesThatAnArchiveDoesNotKeep)
{
    MakeFiles("archive/names.txt");
    EXPECT_EQ(JobEnd::Done, Pack());
    EXPECT_EQ(ReadFixture("archive/nameslog.txt"), Log());
}

TEST_F(Jobs, UnpackAnythingWithinTheTarget)
{
    const Tree tree = MakeFiles();
    Pack();
    const std::string whole = folder.Get("made.pkg");
    std::minstd_rand random(1);
    for (std::size_t run = 0; run < whole.size() + 500; ++run) {
        std::string bytes = whole.substr(0, run);
        for (auto count = run < whole.size() ? 0 : run % 4 + 1; count > 0; --count)
            bytes[random() % bytes.size()] = char(random() >> 8);
        Remove("made.pkg"); // rewriting it is slower
        Remove("out");
        folder.Put("made.pkg", bytes);
        EXPECT_NE(JobEnd::Aborted, Unpack()) << run;
        EXPECT_EQ(3U, folder.EntryCount()) << run;
        EXPECT_TRUE(run >= whole.size() || TreeOf("out") == tree || !lines.filter(u"поврежд"_s).isEmpty())
            << run;
    }
}

TEST(SkipCompression, KnowsWhatShrinks)
{
    for (const TableRow &row : ReadTable("archive/skips.txt", 3))
        EXPECT_EQ(row.Int(2) != 0, SkipCompression(row.Text(0), row.Number(1))) << row.line;
}

} // namespace
