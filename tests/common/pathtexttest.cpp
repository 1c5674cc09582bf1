#include "common/paths.h"
#include "common/text.h"
#include "support/tempfolder.h"

#include <climits>
#include <gtest/gtest.h>

using namespace wb;

namespace
{

TEST(Paths, AreTakenApart)
{
    const struct {
        QString Path;
        QString Folder;
        QString Name;
        QString Title;
        QString Extension;
    } cases[] = {{u"C:\\file.gi"_qs, u"C:\\"_qs, u"file.gi"_qs, u"file"_qs, u"gi"_qs},
                 {u"C:\\x\\file.gi"_qs, u"C:\\x"_qs, u"file.gi"_qs, u"file"_qs, u"gi"_qs},
                 {u"C:\\a.b\\c"_qs, u"C:\\a.b"_qs, u"c"_qs, u"c"_qs, u"b\\c"_qs},
                 {u"a.b.c"_qs, u""_qs, u"a.b.c"_qs, u"a.b"_qs, u"c"_qs},
                 {u"\\a"_qs, u""_qs, u"a"_qs, u"a"_qs, u""_qs},
                 {u"C:\\x\\"_qs, u"C:\\x"_qs, u""_qs, u""_qs, u""_qs},
                 {u".gi"_qs, u""_qs, u".gi"_qs, u""_qs, u"gi"_qs},
                 {u""_qs, u""_qs, u""_qs, u""_qs, u""_qs}};
    for (const auto &one : cases) {
        EXPECT_EQ(GetFolder(one.Path), one.Folder);
        EXPECT_EQ(GetFileName(one.Path), one.Name);
        EXPECT_EQ(GetFileTitle(one.Path), one.Title);
        EXPECT_EQ(GetExtension(one.Path), one.Extension);
    }
    EXPECT_EQ(NormalizePath(u"C:\\\\a\\\\\\\\b"_qs), u"C:\\a\\\\b"_qs);
}

TEST(Text, PadsReadsHexAndFiltersKeys)
{
    EXPECT_EQ(ZeroPad(7, 3), u"007"_qs);
    EXPECT_EQ(ZeroPad(1234, 3), u"1234"_qs);
    EXPECT_EQ(ZeroPad(-7, 3), u"0-7"_qs);
    EXPECT_EQ(ZeroPad(0, -1), u"0"_qs);
    const std::pair<QString, std::int32_t> cases[] = {
        {u"FF"_qs, 255},           {u"ff"_qs, 255},      {u"FG"_qs, 0}, {u"123456789"_qs, 0}, {u""_qs, 0},
        {u"80000000"_qs, INT_MIN}, {u"FFFFFFFF"_qs, -1}, {u"-1"_qs, 0}, {u"1@"_qs, 0},        {u"`1"_qs, 0},
        {u"\x0430"_qs, 0}};
    for (const auto &[text, value] : cases)
        EXPECT_EQ(HexToLong(text), value) << text.toStdString();
    for (int key = -1; key < 300; ++key) {
        int filtered = key;
        FilterDigitKey(filtered);
        EXPECT_EQ(filtered, key == 8 || (key >= '0' && key <= '9') ? key : 0);
    }
}

} // namespace
