// Names, patterns and the code page: text that has to survive the way to the disk and back.
#include "platform/ansi.h"
#include "platform/nativepath.h"
#include "platform/wildcard.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>
#include <random>
#include <set>

using namespace wb;

namespace
{

struct NameCase {
    std::string Native;
    QString Name;
    QString Shown;
};

TEST(NativeName, EveryNameHasItsText)
{
    const NameCase cases[] = {
        {"a.gi", u"a.gi"_qs, u"a.gi"_qs},
        {"Файл 1.gi", u"Файл 1.gi"_qs, u"Файл 1.gi"_qs},
        {"\xF0\x9F\x98\x80", QString::fromUcs4(U"\x1F600"), QString::fromUcs4(U"\x1F600")},
        {"a\\b*c?d:e",
         u"a\xF05C"
         u"b\xF02A"
         u"c\xF03F"
         u"d\xF03A"
         u"e"_qs,
         u"a\\b*c?d:e"_qs},
        {"\xD4\xE0\xE9\xEB", u"\xF0D4\xF0E0\xF0E9\xF0EB"_qs, u"Файл"_qs}, // written under Windows
        {"\xEF\x81\x9C", u"\xF0EF\xF081\xF09C"_qs, u"п\x0403њ"_qs},       // U+F05C itself
        {"\xED\xA0\x80", u"\xF0ED\xF0A0\xF080"_qs, u"н\xA0\x0402"_qs},    // a surrogate
        {"\xC0\xAF", u"\xF0C0\xF0AF"_qs, u"АЇ"_qs},                       // overlong "/"
        {"\xE2\x82", u"\xF0E2\xF082"_qs, u"в‚"_qs},                       // breaks off
    };
    for (const NameCase &one : cases) {
        EXPECT_EQ(FromNativeName(one.Native), one.Name) << one.Native;
        EXPECT_EQ(ToNativeName(one.Name), one.Native) << one.Native;
        EXPECT_EQ(DisplayName(one.Name), one.Shown) << one.Native;
    }
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

TEST(NativeName, WhatCanBeNoNameIsRefused)
{
    for (const QString &name : {u""_qs, u"."_qs, u".."_qs, u"a\\b"_qs, u"a/b"_qs, u"*.gi"_qs, u"a?"_qs,
                                u"a:b"_qs, QString(QChar(u'\0'))}) {
        EXPECT_EQ(ToNativeName(name), "");
        EXPECT_EQ(NativeChild("/x", name), "");
    }
    EXPECT_EQ(NativeChild("/", u"a"), "/a");
    EXPECT_EQ(NativeChild("/x", u"..a"), "/x/..a");
    EXPECT_EQ(NativeChild("", u"a"), "");
}

TEST(Wildcard, TakesNamesAsFileDialogsDo)
{
    const struct {
        QString Pattern;
        QString Name;
        bool Matches;
    } cases[] = {{u"*.*"_qs, u"nodot"_qs, true},     {u"*"_qs, u"a.b"_qs, true},
                 {u"*.GI"_qs, u"a.gi"_qs, true},     {u"*.gi"_qs, u"A.GI"_qs, true},
                 {u"*.gi"_qs, u"a.gif"_qs, false},   {u"*.gi"_qs, u"gi"_qs, false},
                 {u"*.gi"_qs, u".gi"_qs, true},      {u"*.игра"_qs, u"А.ИГРА"_qs, true},
                 {u"ф*.g?"_qs, u"Файл.GI"_qs, true}, {u"a?c"_qs, u"ac"_qs, false},
                 {u"a?c"_qs, u"aXc"_qs, true},       {u"*a*b*"_qs, u"xxaxxbxx"_qs, true},
                 {u"*a*b"_qs, u"xxbxxa"_qs, false},  {u"a.gi"_qs, u"A.gi"_qs, true},
                 {u"a.gi"_qs, u"a.gix"_qs, false},   {u""_qs, u""_qs, false},
                 {u"a*"_qs, u"a"_qs, true},          {u"**.gi"_qs, u"x.gi"_qs, true}};
    for (const auto &one : cases)
        EXPECT_EQ(Wildcard(one.Pattern).Matches(one.Name), one.Matches)
            << one.Pattern.toStdString() << " " << one.Name.toStdString();
    // Exponential backtracking would never come back.
    EXPECT_FALSE(Wildcard(u"*a*a*a*a*a*a*a*a*a*b"_qs).Matches(QString(2000, u'a')));
}

TEST(Ansi, EveryByteComesBackAndStrangersBecomeQuestionMarks)
{
    ByteArray all;
    for (int byte = 0; byte < 256; ++byte)
        all.push_back(std::uint8_t(byte));
    EXPECT_EQ(ToAnsi(FromAnsi(all)), all);

    const QString text = u"Ёё Аа Яя Ґї № € … «»"_qs;
    const std::string_view bytes = "\xA8\xB8 \xC0\xE0 \xDF\xFF \xA5\xBF \xB9 \x88 \x85 \xAB\xBB";
    EXPECT_EQ(FromAnsi(BytesOf(bytes)), text);
    const ByteArray strange = ToAnsi(QString::fromUcs4(U"é\x1F600漢a"));
    EXPECT_EQ(std::string(strange.begin(), strange.end()), "???a");
}

} // namespace
