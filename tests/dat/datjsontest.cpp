#include "dat/datjson.h"
#include "common/json.h"
#include "dat/datlisting.h"
#include "dat/datreader.h"
#include "dat/datshowntext.h"
#include "support/madedat.h"
#include "support/table.h"
#include "support/tempfolder.h"

namespace wb
{

namespace
{

using namespace Qt::StringLiterals;

TEST(DatJson, EveryCodeUnitComesBack)
{
    QString units = u"\uFEFF🚀"_s;
    for (char16_t unit = 0xFFFF; unit > 0; --unit) // this way round no surrogates make a pair
        units += QChar(unit);
    ByteArray bytes = MadeDat(u"N2 b-7,2147483647:Ё P1"_s);
    bytes.push_back(255);
    DatWriteText(bytes, units);
    DatWriteText(bytes, u"\xDC00\xD800");
    const ByteArray value = MadeDat(u"v1:="_s);
    bytes.insert(bytes.end(), value.begin(), value.end());
    for (const bool isZL : {false, true}) {
        DatTree tree = DatParse(bytes);
        tree.IsZL = isZL;
        const ByteArray json = DatToJson(tree);
        EXPECT_NE(std::string::npos, TextOf(json).find(R"("value": "\udc00\ud800"})"));
        EXPECT_TRUE(bytes == DatFromJson(json).Plain);
        EXPECT_EQ(isZL, DatFromJson(json).IsZL);
    }
}

TEST(DatJson, DepthIsTheFilesToChoose)
{
    constexpr int depth = 100'000;
    const ByteArray bytes = MadeDat(u"N1 b1:a "_s.repeated(depth) + u"P1 1:b=c"_s);
    const DatTree tree = DatParse(bytes);
    EXPECT_TRUE(bytes == DatSerialize(tree));
    EXPECT_EQ(std::vector{depth + 1}, DatListFolder(tree, u"A\\"_s.repeated(depth).chopped(1), 1));
    EXPECT_TRUE(bytes == DatFromJson(DatToJson(tree)).Plain);
    EXPECT_FALSE(JsonText::Read(BytesOf(std::string(depth, '['))));
    const std::string deep = std::string(depth, '[') + std::string(depth, ']');
    EXPECT_TRUE(JsonText::Read(BytesOf(deep)));
    EXPECT_THROW(JsonText::Read(BytesOf(deep), 10 * depth), std::bad_alloc);
}

TEST(DatJson, WhatOthersWriteIsReadAndWhatIsWrongIsToldWithItsPlace)
{
    const DatFromJsonResult sorted = DatFromJson(BytesOf(R"({"root":{"children":[{"aux":-2,"block":{"children"
        :[{"value":"\"\\\/\b\f\n\r\tЁ","name":"\u0401","type":8,"x":[1e3,-0.5,null,{}],"t\u0079pe":9}],
        "kind":"pairs"},"id":1,"name":"a","type":"block"}],"kind":"nodes"},"zl":true})"));
    EXPECT_EQ(QString(), sorted.Problem);
    EXPECT_EQ(MadeDat(u"N1 b1,-2:a P1 9:Ё=\"\\/\b\f\n\r\tЁ"_s), sorted.Plain);
    for (const TableRow &row : ReadTable("dat/jsonproblems.txt", 2))
        EXPECT_EQ(row.Text(1), DatFromJson(BytesOf(row.fields[0])).Problem);
    const ByteArray json = DatToJson(DatParse(MadeDat(u"N2 v1,2:Ё=\n b2:Deep P1 7:name=\"value"_s)));
    EXPECT_EQ(DatFromJson(json).Plain, DatFromJson(BytesOf("\xEF\xBB\xBF" + TextOf(json))).Plain);
    for (std::size_t at = 0; at + 2 < json.size(); ++at) {
        EXPECT_NE(QString(), DatFromJson(ByteView(json).first(at)).Problem) << at;
        for (const char value : {'\0', '"', '\\', '{', ']', ',', '9', '\xFF'}) {
            ByteArray damaged = json;
            damaged[at] = std::uint8_t(value);
            const DatFromJsonResult result = DatFromJson(damaged);
            EXPECT_EQ(result.Problem.isEmpty(), DatParse(result.Plain).Count() > 0) << at << ' ' << value;
        }
    }
}

TEST(DatShownText, EachTextIsShownInALineAndComesBack)
{
    for (const TableRow &row : ReadTable("dat/shown.txt", 2)) {
        EXPECT_EQ(row.Text(1), ShownText(row.Text(0))) << row.line;
        EXPECT_EQ(row.Text(0), MeantText(row.Text(1))) << row.line;
    }
    for (const char16_t beside : {u'a', u'\t', u'⇥', u'\xDBC0', u'\xDC09'})
        for (char16_t unit = 0xFFFF; unit > 0; --unit) {
            const QString text = QChar(beside) + QString(QChar(unit)) + QChar(beside);
            ASSERT_EQ(text, MeantText(ShownText(text))) << int(unit);
        }
}

} // namespace

} // namespace wb
