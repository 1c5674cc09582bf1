#include "dat/datjson.h"
#include "common/json.h"
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

TEST(DatJson, DocumentsComeBackByteForByte)
{
    QStringList documents = {NestedDat(100'000)};
    for (const TableRow &row : ReadTable("dat/documents.txt", 2))
        documents << row.Text(0);
    for (const QString &document : documents) {
        const ByteArray bytes = MadeDat(document);
        DatTree tree = DatParse(bytes);
        tree.IsZL = document.size() % 2 == 0;
        const DatFromJsonResult result = DatFromJson(DatToJson(tree));
        EXPECT_EQ(QString(), result.Problem);
        EXPECT_TRUE(bytes == result.Plain) << document.left(80).toStdString();
        EXPECT_EQ(tree.IsZL, result.IsZL);
    }
}

TEST(DatJson, EveryCodeUnitIsKept)
{
    QString units = u"🚀"_s;
    for (char32_t unit = 0xFFFF; unit > 0; --unit) // no surrogates make a pair this way round
        units += QChar(char16_t(unit));
    ByteArray bytes = MadeDat(u"P1"_s);
    bytes.push_back(1);
    DatWriteText(bytes, units);
    DatWriteText(bytes, u"\xDC00\xD800");
    const ByteArray json = DatToJson(DatParse(bytes));
    EXPECT_NE(std::string::npos, TextOf(json).find(R"("value": "\udc00\ud800"})"));
    EXPECT_TRUE(bytes == DatFromJson(json).Plain);
}

TEST(DatJson, WhatOthersWriteIsReadAndWhatIsWrongIsToldWithItsPlace)
{
    const DatFromJsonResult sorted = DatFromJson(BytesOf(R"({"root":{"children":[{"aux":-2,"block":{"children"
        :[{"value":"\"\\\/\b\f\n\r\tЁ","name":"\u0401","type":9,"x":[1e3,-0.5,null,{}]}],"kind":"pairs"},
        "id":1,"name":"a","type":"block"}],"kind":"nodes"},"zl":true})"));
    EXPECT_EQ(QString(), sorted.Problem);
    EXPECT_EQ(MadeDat(u"N1 b1,-2:a P1 9:Ё=\"\\/\b\f\n\r\tЁ"_s), sorted.Plain);
    for (const TableRow &row : ReadTable("dat/jsonproblems.txt", 2)) {
        const DatFromJsonResult result = DatFromJson(BytesOf(row.fields[0]));
        EXPECT_EQ(row.Text(1), result.Problem);
        EXPECT_TRUE(result.Plain.empty());
    }
    EXPECT_FALSE(JsonText::Read(BytesOf(std::string(1'000'000, '['))));
}

TEST(DatJson, CutOffOrDamagedTextIsRefusedOrRead)
{
    const ByteArray json = DatToJson(DatParse(MadeDat(u"N2 v1,2:Ё=\n b2:Deep P1 7:name=\"value"_s)));
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

TEST(DatShownText, OnlyWhatTheUserChangedIsChanged)
{
    for (const TableRow &row : ReadTable("dat/edits.txt", 3))
        EXPECT_EQ(row.Text(2), EditedText(row.Text(0), row.Text(1))) << row.line;
}

} // namespace

} // namespace wb
