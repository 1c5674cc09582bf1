// Names and the code page: text that has to survive the way to the disk and back.
#include "platform/ansi.h"
#include "platform/nativepath.h"
#include "support/table.h"
#include "support/tempfolder.h"

#include <numeric>
#include <random>
#include <set>

using namespace wb;

namespace
{

TEST(NativeName, EveryNameHasItsText)
{
    for (const TableRow &row : ReadTable("platform/names.txt", 3)) {
        EXPECT_EQ(FromNativeName(row.Bytes(0)), row.Text(1)) << row.line;
        EXPECT_EQ(ToNativeName(row.Text(1)), row.Bytes(0)) << row.line;
        EXPECT_EQ(DisplayName(row.Text(1)), row.Text(2)) << row.line;
    }
    for (const TableRow &row : ReadTable("platform/children.txt", 3))
        EXPECT_EQ(NativeChild(row.Bytes(0), row.Text(1)), row.Bytes(2)) << row.line;
}

TEST(NativeName, AnyBytesComeBackAndNoTwoShareAText)
{
    std::mt19937 random(7);
    // Bytes that begin, continue and break sequences, and those of the stand-ins' own encoding.
    const std::string alphabet = "aZ.\\*?: \x80\x9C\xAA\xBF\xC3\xD0\xE2\xED\xEF\xF0\xF4\xFF\x81\x82";
    std::set<std::string> natives;
    std::set<QString> names;
    for (int round = 0; round < 20000; ++round) {
        std::string native;
        for (std::size_t length = 1 + random() % 6; native.size() < length;)
            native += alphabet[random() % alphabet.size()];
        if (native == "." || native == "..")
            continue;
        const QString name = FromNativeName(native);
        ASSERT_EQ(ToNativeName(name), native);
        natives.insert(native);
        names.insert(name);
    }
    EXPECT_EQ(natives.size(), names.size());
}

TEST(Ansi, EveryByteComesBackAndStrangersBecomeQuestionMarks)
{
    ByteArray all(256);
    std::iota(all.begin(), all.end(), std::uint8_t(0));
    EXPECT_EQ(ToAnsi(FromAnsi(all)), all);
    EXPECT_EQ(FromAnsi(BytesOf("\xA8\xB8 \xC0\xE0 \xDF\xFF \xA5\xBF \xB9 \x88 \x85 \xAB\xBB")),
              u"Ёё Аа Яя Ґї № € … «»"_qs);
    EXPECT_EQ(TextOf(ToAnsi(QString::fromUcs4(U"é\x1F600漢a"))), "???a");
}

} // namespace
