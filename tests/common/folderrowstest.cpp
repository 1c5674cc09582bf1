// The file list's rows and its walk through the folders.
#include "common/folderrows.h"
#include "support/tempfolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace wb;
using testing::ElementsAre;

namespace
{

const QString Program = u"C:\\Prog"_qs;

std::vector<QString> Names(const FolderRows &rows)
{
    std::vector<QString> names;
    for (const FolderRow &row : rows)
        names.push_back(row.Name);
    return names;
}

TEST(FolderRows, PathsAreNormalized)
{
    const std::pair<QString, QString> cases[] = {
        {u""_qs, u""_qs},
        {u"C:\\Games\\..\\Data\\\\Sub"_qs, u"C:\\Data\\Sub"_qs},
        {u"C:\\.."_qs, u""_qs},
        {u"C:\\\\..\\x"_qs, u""_qs},
        {u"C:"_qs, u"C:\\"_qs},
        {u"C:\\"_qs, u"C:\\"_qs},
        {u"C:\\a\\.."_qs, u"C:\\"_qs},
        {u"C:\\a\\b\\..\\..\\c"_qs, u"C:\\c"_qs},
        {u"C:\\a\\b\\..\\..\\..\\.."_qs, u""_qs},
        {u"C:\\a\\..b\\..c\\.."_qs, u"C:\\a\\..b"_qs}, // names may begin with dots
        {u"C:\\a\\\\\\\\\\b"_qs, u"C:\\a\\b"_qs},
        {u"C:a\\.."_qs, u""_qs},
        {u"data"_qs, u"C:\\Prog\\data"_qs},
        {u"\\data"_qs, u"C:\\Prog\\data"_qs},
        {u"..\\x"_qs, u"C:\\x"_qs},
        {u"x"_qs, u"C:\\Prog\\x"_qs}};
    for (const auto &[path, normal] : cases)
        EXPECT_EQ(NormalizeListPath(path, Program), normal) << path.toStdString();
    EXPECT_EQ(NormalizeListPath(u"data"_qs, u"C:\\"_qs), u"C:\\data"_qs);
    EXPECT_EQ(NormalizeListPath(u"..\\.."_qs, QString()), QString());
}

TEST(FolderRows, ListsDrives)
{
    const FolderRows rows = DriveRows({{'A', 2, u"FLOPPY"_qs, "/a"},
                                       {'B', 2, {}, "/b"},
                                       {'C', 3, {}, "/"},
                                       {'D', 2, {}, "/d"},
                                       {'E', 2, u"СТИК"_qs, "/e"},
                                       {'F', 4, {}, "/f"},
                                       {'G', 5, {}, "/g"},
                                       {'H', 6, {}, "/h"}});
    const struct {
        QString Text;
        QString Name;
        int Picture;
    } expected[] = {{u"Дисковод 3,5 (A:)"_qs, u"A:\\"_qs, 0},   {u"Дисковод 3,5 (B:)"_qs, u"B:\\"_qs, 0},
                    {u"Локальный диск (C:)"_qs, u"C:\\"_qs, 1}, {u"Съемный диск (D:)"_qs, u"D:\\"_qs, 4},
                    {u"СТИК (E:)"_qs, u"E:\\"_qs, 4},           {u"Сетевой диск (F:)"_qs, u"F:\\"_qs, 2},
                    {u"CD дисковод (G:)"_qs, u"G:\\"_qs, 3},    {u"RAM диск (H:)"_qs, u"H:\\"_qs, 4}};
    ASSERT_EQ(rows.size(), std::size(expected));
    for (std::size_t index = 0; index < rows.size(); ++index) {
        EXPECT_EQ(rows[index].Text, expected[index].Text);
        EXPECT_EQ(rows[index].Name, expected[index].Name);
        EXPECT_EQ(rows[index].Picture, expected[index].Picture);
        EXPECT_EQ(rows[index].Kind, RowDrive);
    }
}

TEST(FolderRows, ListsFoldersThenFilesByPattern)
{
    const TempFolder folder;
    for (const char *name : {"b.gi", "A.GI", "c.gai", "d.txt", ".x.gi", "q?.gi"})
        folder.Put(name);
    folder.MakeFolder(".hid");
    folder.MakeFolder("Sub.gi");
    const QString pattern = u"*.gai;*.gi;c*"_qs;
    const FolderRows rows = ListRows(folder.Path(), pattern, 0);
    EXPECT_THAT(Names(rows), ElementsAre(u".."_qs, u".hid"_qs, u"Sub.gi"_qs, u"c.gai"_qs, u"A.GI"_qs,
                                         u"b.gi"_qs, u"q\xF03F.gi"_qs, u"c.gai"_qs));
    EXPECT_EQ(rows[0].Text, u"..          "_qs);
    EXPECT_EQ(rows[6].Text, u"q?.gi"_qs);
    std::vector<int> kinds;
    std::vector<int> pictures;
    for (const FolderRow &row : rows) {
        kinds.push_back(row.Kind);
        pictures.push_back(row.Picture);
    }
    EXPECT_THAT(kinds, ElementsAre(-1, 1, 1, 2, 2, 2, 2, 2));
    EXPECT_THAT(pictures, ElementsAre(6, 5, 5, 7, 8, 8, 8, 9));

    EXPECT_THAT(Names(ListRows(folder.Path(), pattern, ListFoldersOnly)),
                ElementsAre(u".."_qs, u".hid"_qs, u"Sub.gi"_qs));
    EXPECT_THAT(Names(ListRows(folder.Path(), u"*.gai"_qs, ListFilesOnly)), ElementsAre(u"c.gai"_qs));
    EXPECT_THAT(Names(ListRows(folder.Path(u"none"_qs), pattern, 0)), ElementsAre(u".."_qs));
    EXPECT_THAT(Names(ListRows(folder.Path(u"b.gi"_qs), pattern, ListFilesOnly)), ElementsAre());
    EXPECT_EQ(ListRows(QString(), pattern, 0).at(0).Kind, RowDrive);
}

TEST(FolderRows, RefreshKeepsTheSelectionByName)
{
    const FolderRows rows = {{u"..          "_qs, u".."_qs, RowUp, PictureUp},
                             {u"a"_qs, u"a"_qs, RowFolder, PictureFolder},
                             {u"q?"_qs, u"q\xF03F"_qs, RowFile, PicturePatterns}};
    FolderRows other = rows;
    EXPECT_FALSE(RowsDiffer(rows, other));
    other[1].Kind = RowFile; // only what is shown counts
    EXPECT_FALSE(RowsDiffer(rows, other));
    other[1].Text = u"A"_qs;
    EXPECT_TRUE(RowsDiffer(rows, other));
    EXPECT_TRUE(RowsDiffer(rows, {rows[0], rows[1]}));

    EXPECT_EQ(FindRow(rows, u"A"_qs), 1);
    EXPECT_EQ(FindRow(rows, ReselectName(rows[2])), 2);
    EXPECT_EQ(FindRow(rows, ReselectName(rows[0])), 0);
    EXPECT_EQ(FindRow(rows, u"gone"_qs), 0);
    EXPECT_EQ(FindRow({}, u"a"_qs), -1);
    const FolderRow drive = {u"Локальный диск (C:)"_qs, u"C:\\"_qs, RowDrive, 1};
    EXPECT_EQ(FindRow({rows[1], drive}, ReselectName(drive)), 0) << "a drive's text is not its name";
}

TEST(FolderRows, OpeningWalksTheTree)
{
    const TempFolder folder;
    folder.MakeFolder("Sub/Deep");
    const auto open = [](RowKind kind, const QString &name, const QString &path) {
        return OpenRow({name, name, kind, 0}, path, Program);
    };
    EXPECT_FALSE(open(RowFile, u"a.gi"_qs, folder.Path()).PathChanges);
    EXPECT_EQ(open(RowDrive, u"C:\\"_qs, QString()).Path, u"C:\\"_qs);

    const OpenedRow down = open(RowFolder, u"Sub"_qs, folder.Path());
    EXPECT_TRUE(down.PathChanges);
    EXPECT_EQ(down.Path, folder.Path(u"Sub"_qs));
    EXPECT_EQ(open(RowFolder, u"Gone"_qs, folder.Path()).Path, folder.Path());
    EXPECT_EQ(open(RowFolder, u"tmp"_qs, u"C:\\"_qs).Path, u"C:\\tmp"_qs);

    const OpenedRow up = open(RowUp, u".."_qs, folder.Path(u"Sub\\Deep"_qs));
    EXPECT_EQ(up.Path, folder.Path(u"Sub"_qs));
    EXPECT_EQ(up.SelectName, u"Deep"_qs);
    EXPECT_EQ(open(RowUp, u".."_qs, folder.Path(u"Gone\\Too"_qs)).Path, folder.Path());
    const OpenedRow top = open(RowUp, u".."_qs, u"C:\\"_qs);
    EXPECT_EQ(top.Path, QString());
    EXPECT_EQ(top.SelectName, u"C:\\"_qs);
    EXPECT_EQ(ListDriveRows().at(std::size_t(FindRow(ListDriveRows(), top.SelectName))).Name, u"C:\\"_qs);
    EXPECT_EQ(NearestFolder(u"Я:\\no\\such"_qs, Program), QString());
}

} // namespace
