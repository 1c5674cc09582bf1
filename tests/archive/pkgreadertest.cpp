#include "archive/pkgreader.h"

#include "madebytes.h"
#include "support/table.h"

using namespace wb;
using namespace wb::test;

namespace
{

ByteArray ArchiveHeader()
{
    ByteArray header(4, 0);
    header[0] = 4;
    return header;
}

// The directories that a line of pkgtrees.txt describes, as an archive.
ByteArray MakeDirectories(const QString &text)
{
    ByteArray archive = ArchiveHeader();
    for (const QString &directory : text.split(u';')) {
        PkgEntryList list;
        for (const QString &record : directory.section(u':', 1).split(u' ', Qt::SkipEmptyParts)) {
            const bool isFolder = record.contains(u'>');
            const QStringList fields = record.split(isFolder ? u'>' : u'=');
            const std::int32_t number = fields.size() > 1 ? fields[1].toInt() : PkgStored;
            list.push_back({fields[0], {}, 0, 0, isFolder ? number : 0, isFolder ? PkgFolder : number});
        }
        ByteArray bytes = PkgDirectoryBytes(list);
        const QStringList place = directory.section(u':', 0, 0).split(u'/');
        if (place.size() > 1)
            PutLong(bytes, 4, place[1].toInt());
        const auto offset = place[0].toUInt();
        archive.resize(std::max(archive.size(), offset + bytes.size()), 0xFF);
        std::ranges::copy(bytes, archive.begin() + offset);
    }
    return archive;
}

class PkgReader : public testing::Test
{
protected:
    PkgHandle Open(ByteView bytes)
    {
        folder.Put("made.pkg", TextOf(bytes));
        FileError error = {};
        return PkgOpenRead(folder.Path(QStringLiteral("made.pkg")), error);
    }
    PkgEntryList Walk(ByteView bytes)
    {
        const PkgHandle archive = Open(bytes);
        return PkgReadTree(*archive, archive->RootOffset);
    }

    TempFolder folder;
};

TEST_F(PkgReader, ReadsRecords)
{
    QStringList rows;
    for (const PkgEntry &entry : Walk(ReadHex("archive/smalltree.txt")))
        rows.push_back(QStringLiteral("%1 | %2 | %3 | %4 | %5")
                           .arg(entry.FullPath())
                           .arg(entry.Type)
                           .arg(entry.PackedSize)
                           .arg(entry.Size)
                           .arg(entry.Offset));
    EXPECT_EQ(ReadFixture("archive/smalltreerows.txt"), rows.join(u'\n').toStdString() + '\n');
}

TEST_F(PkgReader, WalksThroughAnyDirectories)
{
    for (const TableRow &row : ReadTable("archive/pkgtrees.txt", 3)) {
        QStringList paths;
        for (const PkgEntry &entry : Walk(MakeDirectories(row.Text(1))))
            paths.push_back(entry.FullPath());
        EXPECT_EQ(row.fields[2], paths.join(u' ').toStdString()) << row.line;
    }
}

TEST_F(PkgReader, ListsAFolderInAnyCase)
{
    const PkgEntryList tree =
        Walk(MakeDirectories(QStringLiteral("4: zeta>2000 b.gi Alpha>1000 C.gi a.gi Яма>3000;"
                                            "1000: sub>4000 q; 2000: b; 3000: я Б а; 4000: deep")));
    for (const TableRow &row : ReadTable("archive/pkglists.txt", 2)) {
        QStringList names;
        for (const PkgEntry &entry : PkgListFolder(tree, row.Text(0)))
            names.push_back(entry.Name);
        EXPECT_EQ(row.fields[1], names.join(u' ').toStdString()) << row.line;
    }
}

TEST_F(PkgReader, ReadsWhatIsThere)
{
    ByteArray bytes(100);
    std::iota(bytes.begin(), bytes.end(), std::uint8_t(0));
    const PkgHandle archive = Open(bytes);
    for (const TableRow &row : ReadTable("archive/pkgdata.txt", 7)) {
        ByteArray data(100, 7), expected(100, 7);
        if (row.fields[4] != "-") {
            expected.resize(std::size_t(row.Int(5)));
            std::iota(expected.begin(), expected.end(), std::uint8_t(row.Int(4)));
        }
        const PkgEntry entry = {{}, {}, row.Int(2), 0, row.Int(3), row.Int(1)};
        EXPECT_EQ(row.Int(6) != 0, PkgReadEntryData(*archive, data, entry)) << row.line;
        EXPECT_EQ(expected, data) << row.line;
        EXPECT_LE(data.capacity(), 100U) << row.line;
    }
}

// Each folder lies in the one before: a walk ends before the stack does.
TEST_F(PkgReader, WalksOnlySoDeep)
{
    ByteArray archive = ArchiveHeader();
    for (std::int32_t next = 4 + 170; next < 100'000 * 170; next += 170)
        std::ranges::copy(PkgDirectoryBytes({{QStringLiteral("d"), {}, 0, 0, next, PkgFolder}}),
                          std::back_inserter(archive));
    EXPECT_EQ(2049U, Walk(archive).size());
}

// Each folder's directory starts inside the one before it, with all the records behind: together they would
// have the square of what is in the file.
TEST_F(PkgReader, ReadsNoMoreRecordsThanTheFileHolds)
{
    PkgEntryList list(10'000);
    for (std::size_t i = 0; i < list.size(); ++i)
        list[i] = {QStringLiteral("d"), {}, 0, 0, std::int32_t(4 + 158 * (i + 1)), PkgFolder};
    ByteArray archive = ArchiveHeader();
    std::ranges::copy(PkgDirectoryBytes(list), std::back_inserter(archive));
    EXPECT_EQ(list.size(), Walk(archive).size());
}

TEST_F(PkgReader, OpensFilesOnly)
{
    FileError error = {};
    EXPECT_EQ(nullptr, PkgOpenRead(folder.Path(), error));
    EXPECT_EQ(FileError::AccessError, error);
    EXPECT_EQ(nullptr, PkgOpenRead(folder.Path(QStringLiteral("none\\x.pkg")), error));
    EXPECT_EQ(FileError::PathNotFound, error);
    for (const char *path : {"C:\\a.pkg", "a.PkG", "C:\\x.pkg\\.pkg"})
        EXPECT_TRUE(IsPkgPath(QLatin1String(path))) << path;
    for (const char *path : {"pkg", "a.pkg2", "a.pkg.gi", ""})
        EXPECT_FALSE(IsPkgPath(QLatin1String(path))) << path;
}

} // namespace
