#include "archive/pkgreader.h"

#include "common/bytes.h"
#include "support/table.h"
#include "support/tempfolder.h"

#include <numeric>

using namespace Qt::StringLiterals;
using namespace wb;

namespace
{

// The directories that a line of pkgtrees.txt describes, as an archive.
ByteArray MakeDirectories(const QString &text)
{
    ByteArray archive(4, 0);
    PutLong(archive, 0, 4);
    for (const QString &directory : text.split(u';')) {
        PkgEntryList list;
        for (const QString &record : directory.section(u':', 1).split(u' ', Qt::SkipEmptyParts)) {
            const QStringList part = record.split(u'/');
            list.push_back({part[0], {}, 0, 0, part.value(2).toInt(), part.value(1, u"1"_s).toInt()});
        }
        ByteArray bytes = PkgDirectoryBytes(list);
        const QStringList place = directory.section(u':', 0, 0).trimmed().split(u' ');
        PutLong(bytes, 4, place.value(1, QString::number(list.size())).toInt());
        archive.resize(std::max(archive.size(), place[0].toUInt() + bytes.size()), 0xFF);
        std::ranges::copy(bytes, archive.begin() + place[0].toInt());
    }
    return archive;
}

PkgHandle Open(ByteView bytes)
{
    const TempFolder folder;
    folder.Put("made", TextOf(bytes));
    FileError error = {};
    return PkgOpenRead(folder.Path(u"made"_s), error);
}

TEST(PkgReader, WalksAndListsAnyDirectories)
{
    for (const TableRow &row : ReadTable("archive/pkgtrees.txt", 4)) {
        const PkgEntryList tree = PkgReadTree(*Open(MakeDirectories(row.Text(1))), 4);
        QStringList paths;
        for (const PkgEntry &entry : row.fields[2] == "*" ? tree : PkgListFolder(tree, row.Text(2)))
            paths.push_back(entry.FullPath());
        EXPECT_EQ(row.fields[3], paths.join(u' ').toStdString()) << row.line;
    }
}

TEST(PkgReader, TellsWhetherADirectoryIsWhole)
{
    for (const auto &[text, isWhole] : {std::pair{u"4: a b"_s, true},
                                        {u"4 1: a b"_s, true},
                                        {u"4 3: a b"_s, false},
                                        {u"4 -1: a b"_s, false}}) {
        const PkgHandle archive = Open(MakeDirectories(text));
        PkgWalk walk(*archive);
        walk.Enter(4, {});
        EXPECT_EQ(isWhole, walk.IsWhole()) << text.toStdString();
    }
}

TEST(PkgReader, ReadsWhatIsThere)
{
    ByteArray bytes(100);
    std::iota(bytes.begin(), bytes.end(), std::uint8_t(0));
    const PkgHandle archive = Open(bytes);
    for (const TableRow &row : ReadTable("archive/pkgdata.txt", 7)) {
        ByteArray data(100, 7), expected = data;
        if (row.fields[4] != "-")
            expected.assign(bytes.begin() + row.Int(4), bytes.begin() + row.Int(4) + row.Int(5));
        const PkgEntry entry = {{}, {}, row.Int(2), 0, row.Int(3), row.Int(1)};
        EXPECT_EQ(row.Int(6) != 0, PkgReadEntryData(*archive, data, entry)) << row.line;
        EXPECT_EQ(expected, data) << row.line;
        EXPECT_LE(data.capacity(), 100U) << row.line;
    }
}

// One folder in the other: a walk ends before the stack does. One directory that starts inside the other,
// with all the records behind: together they would have the square of what is in the file.
TEST(PkgReader, WalksInProportionToTheFile)
{
    QStringList deep, overlapping;
    for (int i = 0; i < 100'000; ++i)
        deep.push_back(u"%1: d/3/%2"_s.arg(4 + 170 * i).arg(174 + 170 * i));
    for (int i = 1; i <= 10'000; ++i)
        overlapping.push_back(u"d/3/%1"_s.arg(4 + 158 * i));
    EXPECT_EQ(2049U, PkgReadTree(*Open(MakeDirectories(deep.join(u';'))), 4).size());
    const PkgHandle archive = Open(MakeDirectories(u"4:"_s + overlapping.join(u' ')));
    EXPECT_EQ(10'000U, PkgReadTree(*archive, 4).size());
}

} // namespace
