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
        items << u"%1,%2,%3 %4"_s.arg(node.Id).arg(node.Aux).arg(node.Type).arg(tree.FullPath(i)) +
                     (node.OpensBlock ? u" %1(%2)"_s.arg(u"PN"_s[node.Kind]).arg(node.Count)
                                      : u'=' + tree.Value(i));
    }
    return items.join(u"; "_s).replace(u"  "_s, u" "_s);
}

ByteArray Start(const ByteArray &bytes, std::size_t length)
{
    return {bytes.begin(), bytes.begin() + std::ptrdiff_t(length)};
}

// What reading by the description gives, item by item.
std::vector<std::int32_t> ListedSlowly(const DatTree &tree, const QString &path, std::int32_t id)
{
    const auto isAt = [&](std::int32_t item, const QString &place) {
        return tree.FullPath(item).compare(place, Qt::CaseInsensitive) == 0;
    };
    std::vector<std::int32_t> list;
    std::int32_t item = 0;
    while (item < tree.Count() && !(isAt(item, path) && tree.Item(item).Id == id))
        ++item;
    const std::int32_t expected = item < tree.Count() ? tree.Item(item).Count : 0;
    const QString prefix = path.isEmpty() || path.endsWith(u'\\') ? path : path + u'\\';
    while (++item < tree.Count() && std::ssize(list) < expected)
        if (isAt(item, prefix + tree.Name(item)))
            list.push_back(item);
    return list;
}

TEST(DatFormat, DocumentsAreReadAndComeBackByteForByte)
{
    for (const TableRow &row : ReadTable("dat/documents.txt", 2)) {
        const ByteArray bytes = MadeDat(row.Text(0));
        ByteArray longer = bytes;
        longer.insert(longer.end(), 7, 1);
        DatTree tree = DatParse(longer);
        EXPECT_EQ(row.Text(1), Told(tree));
        EXPECT_FALSE(tree.IsZL);
        EXPECT_EQ(bytes, DatSerialize(tree)) << row.line;
        tree.IsZL = true;
        const ByteArray packed = DatSerialize(tree);
        EXPECT_EQ("ZL01", TextOf(packed).substr(0, 4));
        tree = DatParse(packed);
        EXPECT_TRUE(tree.IsZL);
        EXPECT_EQ(row.Text(1), Told(tree));
        tree.IsZL = false;
        EXPECT_EQ(bytes, DatSerialize(tree)) << row.line;
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
    for (const int change : {-1, 1, 100, 0}) {
        ByteArray changed = packed;
        changed[4] = std::uint8_t(changed[4] + change);
        EXPECT_EQ(change == 0 ? 2 : 0, DatParse(changed).Count()) << change;
    }
    EXPECT_EQ(0, DatLoadFile(u"C:\\not\\there.dat"_s).Count());
}

TEST(DatFormat, OnlyTheLastTextMayBeCutOff)
{
    const ByteArray bytes = MadeDat(u"N2 v1:a=b b2:Deep N2 v3:c=d b4:e P1 1:name=value"_s);
    const std::size_t last = bytes.size() - 12;
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        const DatTree tree = DatParse(Start(bytes, length));
        EXPECT_EQ(length > last, tree.Count() > 0) << length;
        if (tree.Count() == 0)
            continue;
        const std::size_t units = std::min<std::size_t>((length - last) / 2, 5);
        EXPECT_EQ(u"value"_s.left(qsizetype(units)), tree.Value(tree.Count() - 1));
        ByteArray ended = Start(bytes, last + 2 * units);
        ended.insert(ended.end(), 2, 0);
        EXPECT_EQ(ended, DatSerialize(tree)) << "with a terminator";
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
    const auto change = [&tree](std::initializer_list<std::pair<int, const char16_t *>> values) {
        for (const auto &[item, value] : values)
            tree.SetValue(item, QString::fromUtf16(value));
        return DatSerialize(tree);
    };
    EXPECT_EQ(MadeDat(u"N3 v1:a= b2:c P2 1:d=e 1:f=longer v3:h=i"_s), change({{4, u"longer"}, {1, u""}}));
    tree.SetValue(5, u"z\0z"_s);
    EXPECT_EQ(MadeDat(u"N3 v1:a=x b2:c P2 1:d=y 1:f=longer v3:h=zz"_s), change({{1, u"x"}, {3, u"y"}}));
    ByteArray inner;
    std::int32_t index = 2;
    DatWriteBlock(inner, tree, index);
    EXPECT_EQ(MadeDat(u"P2 1:d=y 1:f=longer"_s), inner);
    EXPECT_EQ(4, index);
}

TEST(DatFormat, DepthIsTheFilesToChoose)
{
    constexpr int depth = 100'000;
    const ByteArray bytes = MadeDat(NestedDat(depth));
    const DatTree tree = DatParse(bytes);
    ASSERT_EQ(depth + 2, tree.Count());
    EXPECT_TRUE(bytes == DatSerialize(tree));
    const QString path = u"A\\"_s.repeated(depth).chopped(1);
    EXPECT_EQ(std::vector{depth + 1}, DatListFolder(tree, path, 1));
    EXPECT_EQ(0, DatParse(Start(bytes, bytes.size() - 20)).Count());
}

TEST(DatFormat, FoldersAreListedAsDescribed)
{
    const DatTree tree = DatParse(
        MadeDat(u"N9 b1:Item N2 v1:x=1 b5:In P1 1:p=1 b2:iteM N2 v1:X=2 b5:In P1 1:p=2 v0:=e b7: N2 v1:x=3 "
                "b8:In P0 b1:A\\B N1 v2:C=4 b3:A N2 b1:B N2 v2:c=5 v3:D=6 b9:B\\ N1 v4:e=7 b4:A\\ N2 v1:B=8 "
                "b2:B P1 1:f=9 v1:Ё=10 b6:ё P1 1:ж=11"_s));
    ASSERT_EQ(28, tree.Count());
    int listed = 0;
    for (std::int32_t item = 0; item < tree.Count(); ++item)
        for (const QString &path :
             {tree.FullPath(item), tree.FullPath(item).toUpper(), tree.FullPath(item) + u'\\'})
            for (std::int32_t id = 0; id < 10; ++id) {
                const auto list = DatListFolder(tree, path, id);
                listed += list.empty() ? 0 : 1;
                EXPECT_EQ(ListedSlowly(tree, path, id), list) << path.toStdString() << ' ' << id;
            }
    EXPECT_GT(listed, 30);
    EXPECT_TRUE(DatListFolder({}, {}, 0).empty());
}

} // namespace

} // namespace wb
