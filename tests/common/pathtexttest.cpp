#include "common/paths.h"
#include "common/text.h"
#include "common/wildcard.h"
#include "support/table.h"
#include "support/tempfolder.h"

using namespace wb;

namespace
{

TEST(Paths, AreTakenApart)
{
    for (const TableRow &row : ReadTable("common/paths.txt", 5)) {
        const QString path = row.Text(0);
        const std::vector parts = {GetFolder(path), GetFileName(path), GetFileTitle(path),
                                   GetExtension(path)};
        for (std::size_t index = 0; index < parts.size(); ++index)
            EXPECT_EQ(parts[index], row.Text(index + 1)) << row.line;
    }
    EXPECT_EQ(NormalizePath(u"C:\\\\a\\\\\\\\b"_qs), u"C:\\a\\\\b"_qs);
}

TEST(Text, PadsReadsHexAndFiltersKeys)
{
    EXPECT_EQ(ZeroPad(7, 3), u"007"_qs);
    EXPECT_EQ(ZeroPad(1234, 3), u"1234"_qs);
    EXPECT_EQ(ZeroPad(-7, 3), u"0-7"_qs);
    EXPECT_EQ(ZeroPad(0, -1), u"0"_qs);
    for (const TableRow &row : ReadTable("common/hex.txt", 2))
        EXPECT_EQ(HexToLong(row.Text(0)), row.Int(1)) << row.line;
    for (int key = -1; key < 300; ++key) {
        int filtered = key;
        FilterDigitKey(filtered);
        EXPECT_EQ(filtered, key == 8 || (key >= '0' && key <= '9') ? key : 0);
    }
}

TEST(Wildcard, TakesNamesAsFileDialogsDo)
{
    for (const TableRow &row : ReadTable("common/wildcards.txt", 3))
        EXPECT_EQ(Wildcard(row.Text(0)).Matches(row.Text(1)), row.Int(2) != 0) << row.line;
    // Exponential backtracking would never come back.
    EXPECT_FALSE(Wildcard(u"*a*a*a*a*a*a*a*a*a*b"_qs).Matches(QString(2000, u'a')));
}

} // namespace
