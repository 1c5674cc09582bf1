// The file list's rows and its walk through the folders.
#include "common/folderrows.h"
#include "support/table.h"
#include "support/tempfolder.h"

using namespace wb;

namespace
{

const QString Program = u"C:\\Prog"_qs;

TEST(FolderRows, PathsAreNormalized)
{
    for (const TableRow &row : ReadTable("common/listpaths.txt", 2))
        EXPECT_EQ(NormalizeListPath(row.Text(0), Program), row.Text(1)) << row.line;
    EXPECT_EQ(NormalizeListPath(u"data"_qs, u"C:\\"_qs), u"C:\\data"_qs);
    EXPECT_EQ(NormalizeListPath(u"..\\.."_qs, QString()), QString());
    EXPECT_EQ(NearestFolder(u"Я:\\no\\such"_qs, Program), QString());
}

TEST(FolderRows, ListsDrives)
{
    for (const TableRow &row : ReadTable("common/driverows.txt", 5)) {
        const FolderRow shown = DriveRows({{row.Bytes(0).at(0), row.Int(1), row.Text(2), {}}}).at(0);
        EXPECT_EQ(shown.Text, row.Text(3));
        EXPECT_EQ(shown.Name, row.Text(0) + u":\\"_qs);
        EXPECT_EQ(shown.Picture, row.Int(4)) << row.line;
    }
    EXPECT_EQ(ListRows(QString(), u"*"_qs, 0).at(0).Kind, RowDrive);
}

TEST(FolderRows, ListsFoldersThenFilesByPattern)
{
    const TempFolder folder;
    for (const char *name : {"b.gi", "A.GI", "c.gai", "d.txt", ".x.gi", "q?.gi"})
        folder.Put(name);
    folder.MakeFolder(".hid");
    folder.MakeFolder("Sub.gi");
    for (const TableRow &expected : ReadTable("common/listings.txt", 4)) {
        QStringList rows;
        for (const FolderRow &row :
             ListRows(folder.Path(expected.Text(0)), expected.Text(1), expected.Int(2)))
            rows.push_back(u"%1 %2 %3"_qs.arg(row.Kind).arg(row.Picture).arg(row.Name));
        EXPECT_EQ(rows.join(u", "), expected.Text(3));
    }
    const FolderRows rows = ListRows(folder.Path(), u"q*"_qs, 0);
    EXPECT_EQ(rows.front().Text, u"..          "_qs);
    EXPECT_EQ(rows.back().Text, u"q?.gi"_qs);
}

TEST(FolderRows, RefreshKeepsTheSelectionByName)
{
    const FolderRows rows = {{u"..          "_qs, u".."_qs, RowUp, PictureUp},
                             {u"a"_qs, u"a"_qs, RowFolder, PictureFolder},
                             {u"q?"_qs, u"q\xF03F"_qs, RowFile, PicturePatterns}};
    FolderRows other = rows;
    other[1].Kind = RowFile; // only what is shown counts
    EXPECT_FALSE(RowsDiffer(rows, other));
    other[1].Text = u"A"_qs;
    EXPECT_TRUE(RowsDiffer(rows, other));
    EXPECT_TRUE(RowsDiffer(rows, {rows[0], rows[1]}));

    EXPECT_EQ(FindRow(rows, u"A"_qs), 1);
    EXPECT_EQ(FindRow(rows, ReselectName(rows[2])), 2);
    EXPECT_EQ(FindRow({rows[1], {u"A"_qs, u"A"_qs, RowFile, 0}}, u"A"_qs), 1);
    EXPECT_EQ(FindRow(rows, u"gone"_qs), 0);
    EXPECT_EQ(FindRow({}, u"a"_qs), -1);
    const FolderRow drive = {u"Локальный диск (C:)"_qs, u"C:\\"_qs, RowDrive, 1};
    EXPECT_EQ(FindRow({rows[1], drive}, ReselectName(drive)), 0) << "a drive's text is not its name";
}

TEST(FolderRows, OpeningWalksTheTree)
{
    const TempFolder folder;
    folder.MakeFolder("Sub/Deep");
    const auto absolute = [&folder](QString path) { return path.replace(u"~"_qs, folder.Path()); };
    for (const TableRow &row : ReadTable("common/opening.txt", 5)) {
        const FolderRow opening = {row.Text(1), row.Text(1), row.Int(0), 0};
        const OpenedRow opened = OpenRow(opening, absolute(row.Text(2)), Program);
        EXPECT_EQ(opened.PathChanges, opening.Kind != RowFile) << row.line;
        EXPECT_EQ(opened.Path, absolute(row.Text(3))) << row.line;
        EXPECT_EQ(opened.SelectName, row.Text(4)) << row.line;
    }
}

} // namespace
