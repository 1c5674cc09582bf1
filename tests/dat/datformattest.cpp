#include "archive/zlblock.h"
#include "dat/datlisting.h"
#include "dat/datreader.h"
#include "support/madedat.h"
#include "support/table.h"
#include "support/tempfolder.h"

namespace wb
{

namespace
{

using namespace Qt::StringLiterals;

QString Told(const DatTree &tree)
{
    QStringList items;
    for (std::int32_t i = 0; i < tree.Count(); ++i) {
        const DatNode &node = tree.Item(i);
        items << u"%1,%2,%3 "_s.arg(node.Id).arg(node.Aux).arg(node.Type) + tree.FullPath(i) +
                     (node.OpensBlock ? u" %1%2"_s.arg(u"PN"_s[node.Kind]).arg(tree.Children(i).size())
                                      : u'=' + tree.Value(i));
    }
    return items.join(u"; "_s);
}

TEST(DatFormat, DocumentsComeBackByteForByte)
{
    for (const TableRow &row : ReadTable("dat/documents.txt", 2)) {
        const ByteArray bytes = MadeDat(row.Text(0));
        ByteArray file = bytes;
        file.insert(file.end(), 7, 1); // nobody's bytes
        for (const bool isZL : {false, true}) {
            DatTree tree = DatParse(file);
            EXPECT_EQ(row.Text(1), Told(tree));
            EXPECT_EQ(isZL, tree.IsZL);
            tree.IsZL = false;
            EXPECT_EQ(bytes, DatSerialize(tree)) << row.line;
            tree.IsZL = true;
            file = DatSerialize(tree);
            EXPECT_EQ("ZL01", TextOf(file).substr(0, 4));
        }
    }
}

TEST(DatFormat, WhatIsNoWholeDocumentIsInvalid)
{
    for (const TableRow &row : ReadTable("dat/files.txt", 2)) {
        const ByteView bytes = BytesOf(row.fields[0]);
        EXPECT_EQ(row.Int(1), DatParse({bytes.begin(), bytes.end()}).Count()) << row.line;
    }
    ByteArray packed;
    ZlBlockPack(packed, MadeDat(u"P1 1:a=b"_s));
    for (const int change : {0, -1, 2, 100}) { // of the length that it states
        packed[4] = std::uint8_t(packed[4] + change);
        EXPECT_EQ(change == 0 ? 2 : 0, DatParse(packed).Count()) << change;
    }
}

TEST(DatFormat, OnlyTheLastTextMayBeCutOff)
{
    const ByteArray bytes = MadeDat(u"N2 v1:a=b b2:Deep N2 v3:c=d b4:e P1 1:name=value"_s);
    const std::size_t last = bytes.size() - 12;
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        ByteArray start(bytes.begin(), bytes.begin() + std::ptrdiff_t(length));
        const ByteArray written = DatSerialize(DatParse(start));
        start.resize(last + std::min<std::size_t>((length - last) / 2, 5) * 2);
        start.resize(start.size() + 2, 0); // its terminator
        EXPECT_EQ(length > last ? start : ByteArray(), written) << length;
    }
}

TEST(DatFormat, DamagedBytesGiveNothingOrWhatIsWrittenTheSame)
{
    const ByteArray bytes = MadeDat(u"N3 v1:a=b b2:Deep N2 v3:c=d b4:e P2 1:n=v 2:= b5:x P0"_s);
    for (std::size_t at = 0; at < bytes.size(); ++at)
        for (const int value : {0, 1, 2, 3, 127, 128, 255}) {
            ByteArray damaged = bytes;
            damaged[at] = std::uint8_t(value);
            const DatTree tree = DatParse(damaged);
            EXPECT_EQ(Told(tree), Told(DatParse(DatSerialize(tree)))) << at << ' ' << value;
            for (std::int32_t item = 0; item < tree.Count(); ++item)
                EXPECT_EQ(tree.Item(item).Count, std::ssize(tree.Children(item))) << at << ' ' << value;
        }
}

TEST(DatFormat, ChangedValuesAreWrittenInTheirPlaces)
{
    DatTree tree = DatParse(MadeDat(u"N3 v1:a=b b2:c P2 1:d=e 1:f=g v3:h=i"_s));
    tree.SetValue(4, u"longer"_s);
    tree.SetValue(1, {});
    EXPECT_EQ(MadeDat(u"N3 v1:a= b2:c P2 1:d=e 1:f=longer v3:h=i"_s), DatSerialize(tree));
    tree.SetValue(5, u"z\0z"_s);
    EXPECT_EQ(MadeDat(u"N3 v1:a= b2:c P2 1:d=e 1:f=longer v3:h=zz"_s), DatSerialize(tree));
    ByteArray inner;
    std::int32_t index = 2;
    DatWriteBlock(inner, tree, index);
    EXPECT_EQ(MadeDat(u"P2 1:d=e 1:f=longer"_s), inner);
    EXPECT_EQ(4, index);
}

TEST(DatFormat, FoldersAreListedByPathAndId)
{
    const DatTree tree = DatParse(
        MadeDat(u"N9 b1:Item N2 v1:x=1 b5:In P1 1:p=1 b2:iteM N2 v1:X=2 b5:In P1 1:p=2 v0:=e b7: N2 v1:x=3 "
                "b8:In P0 b4:A\\ N2 v1:B=4 b2:B P1 1:f=5 b1:A\\B N1 v2:C=6 b3:A N2 b1:B N2 v2:c=7 v3:D=8 "
                "b9:B\\ N1 v4:e=9 v1:Ё=10 b6:ё P1 1:ж=11"_s));
    for (const TableRow &row : ReadTable("dat/folders.txt", 3)) {
        QStringList list;
        for (const std::int32_t item : DatListFolder(tree, row.Text(0), row.Int(1)))
            list << QString::number(item);
        EXPECT_EQ(row.Text(2), list.join(u' ')) << row.line;
    }
}

} // namespace

} // namespace wb
