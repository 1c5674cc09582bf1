// Runs of workbench-cli as a script sees them.
#include "cli/clitest.h"
#include "anim/gaiformat.h"
#include "gi/giformat.h"
#include "support/madedat.h"
#include "support/madesound.h"
#include "support/table.h"

#include <QJsonDocument>
#include <gmock/gmock.h>

#include <map>

namespace wb
{

TEST_F(CliTest, TellsWhatItIsAskedFor)
{
    FrameBuf sprite = MakePicture(7, 4, 0x80FFFFFF);
    sprite.X = 12;
    sprite.Y = 34;
    folder.AddPng("Картинка.png", sprite);
    folder.AddGi("Спрайт.gi", sprite, 2, 2);
    folder.Put("Звук.wav", MakeTone(WavFormat, 22050, 1, 0.1));
    folder.Put("Звук.mp3", MakeTone(Mp3Format, 44100, 2, 0.1) + std::string(9999, 'x'));
    folder.Put("Шрифт.aft", ReadTable("cli/font.txt", 1).at(0).Bytes(0));
    ExpectDone(u"export Шрифт.aft Буква.png --frame 1 --aft-color 12abEF"_qs);
    EXPECT_EQ(MakePicture(1, 2, 0xFF12ABEF).Pixels, ReadBack(u"Буква.png"_qs, "PNG").Pixels);
    PutArchive("Архив.PKG", "cli/archive.txt");
    folder.Put("plain", TextOf(MadeDat(u"N1 b7,8:Имя P2 9:a=Значение 1:=b"_qs)));
    for (const QString &line :
         {u"export plain json"_qs, u"import json Данные.DAT --zl"_qs, u"export Данные.DAT json --force"_qs,
          u"import json again"_qs, u"import json back --plain"_qs})
        ExpectDone(u"dat "_qs + line);
    EXPECT_EQ(folder.Get("plain"), folder.Get("back"));
    EXPECT_EQ(folder.Get("Данные.DAT"), folder.Get("again"));
    ExpectDone(u"gai Бум.gai Картинка.png Спрайт.gi --box 11,3,20,40 --background --delay 7"_qs);
    EXPECT_THAT(Run(u"--version"_qs).out, testing::MatchesRegex("workbench-cli [0-9]+\\.[0-9]+\\.[0-9]+\n"));
    for (const TableRow &row : ReadTable("cli/outputs.txt", 2)) {
        const Result run = Run(row.Text(0));
        EXPECT_EQ(0, run.status) << row.line;
        EXPECT_THAT(run.out, testing::StartsWith(row.Bytes(1)));
        EXPECT_EQ("", run.errors) << "not what the decoder has to say of a sound with more behind it";
    }
    for (const TableRow &row : ReadTable("cli/descriptions.txt", 2)) {
        const Result run = Run(row.Text(0));
        EXPECT_EQ(QJsonDocument::fromJson(row.Bytes(1).c_str()), QJsonDocument::fromJson(run.out.c_str()))
            << run.out;
    }
    ExpectFails(u"--help"_qs, "standard output: can't be written", u"/dev/full"_qs);
}

TEST_F(CliTest, RefusesWrongArguments)
{
    for (const TableRow &row : ReadTable("cli/misuses.txt", 1)) {
        const Result run = Run(row.Text(0));
        EXPECT_EQ(2, run.status) << row.line;
        EXPECT_EQ("", run.out);
        EXPECT_THAT(run.errors, testing::ContainsRegex("^workbench-cli: [^\n]+\n$"));
    }
}

TEST_F(CliTest, GiAndExportKeepEveryPixel)
{
    const std::pair<int, int> typesAndClasses[] = {{0, 0}, {0, 1}, {0, 2}, {1, 1}, {2, 1},
                                                   {2, 2}, {3, 1}, {3, 2}, {4, 1}, {4, 2}};
    for (const auto &[type, transClass] : typesAndClasses) {
        folder.AddPng("вход.png", MakeSprite(transClass));
        ExpectDone(u"gi вход.png спрайт.gi --force --type %1"_qs.arg(type));
        ExpectDone(u"export спрайт.gi выход.png --force"_qs);
        EXPECT_EQ(MakeSprite(transClass).Pixels, ReadBack(u"выход.png"_qs, "PNG").Pixels)
            << "type " << type << ", class " << transClass;
    }
}

TEST_F(CliTest, GiIsPlacedAndCropped)
{
    const FrameBuf source = MakePicture(20, 10, [](int x, int y) { return x / 3 == 2 && y > 1 ? ~0U : 0U; });
    folder.AddPng("a.png", source);
    const GiRect whole = {100, 99999, 120, 100009};
    for (const auto &[crop, layer] :
         {std::pair(u""_qs, whole), std::pair(u" --crop"_qs, GiRect{106, 100001, 109, 100009})}) {
        ExpectDone(u"gi a.png a.gi --force --type 1 --at 100,99999"_qs + crop);
        const std::string bytes = folder.Get("a.gi");
        const GiHeader header = ReadGiHeader(BytesOf(bytes), 0).value_or(GiHeader());
        EXPECT_EQ(whole, header.Bounds);
        EXPECT_EQ(layer, header.Layers[0].Bounds);
        EXPECT_EQ(source.Pixels, ReadBack(u"a.gi"_qs, "GI").Pixels);
    }
}

TEST_F(CliTest, AnimationsAreMadeAndShownAsTheOptionsSay)
{
    const auto picture = [](std::string_view pixels) {
        const std::map<char, std::uint32_t> colours = {
            {'R', 0xFFFF0000}, {'G', 0xFF00FF00}, {'B', 0xFF0000FF}, {'.', 0}};
        return MakePicture(int(pixels.size()), 1,
                           [&](int x, int) { return colours.at(pixels[std::size_t(x)]); });
    };
    FrameBuf second = picture(".G");
    second.X = 1;
    folder.AddPng("a.png", picture("RR."));
    folder.AddGi("b.gi", second, 1, 1);
    for (const TableRow &row : ReadTable("cli/gai.txt", 5)) {
        const std::string beside = row.Bytes(2) + ".gI";
        folder.AddGi(beside, picture("BBB"), 0, 0);
        ExpectDone(u"gai бум.gai a.png b.gi --force "_qs + row.Text(0));
        ExpectDone(u"export бум.gai k.png --all --force "_qs + row.Text(3));
        std::filesystem::remove(folder.Native(beside));
        const std::string file = folder.Get("бум.gai");
        const GaiHeader header = ReadGaiHeader(BytesOf(file)).value();
        const GaiFrame frame = ReadGaiFrame(BytesOf(file), header, 1);
        const auto gi = ReadGiHeader(BytesOf(file), frame.Offset);
        const auto &[left, top, right, bottom] = header.Box;
        std::ostringstream written;
        for (const int number : {left, top, right, bottom, header.Background, frame.Delay, gi ? gi->Type : -1,
                                 gi ? gi->Bounds.Left : 0})
            written << number << ' ';
        EXPECT_EQ(row.Bytes(1) + ' ', written.str()) << row.line;
        const auto split = row.Bytes(4).find(' ');
        EXPECT_EQ(picture(row.Bytes(4).substr(0, split)).Pixels, ReadBack(u"k_000.png"_qs, "PNG").Pixels)
            << row.line;
        EXPECT_EQ(picture(row.Bytes(4).substr(split + 1)).Pixels, ReadBack(u"k_001.png"_qs, "PNG").Pixels)
            << row.line;
    }
    const Result refused = Run(u"gai c.gai a.png b.gi --box 2,0,2,1"_qs);
    EXPECT_THAT(refused.out, testing::MatchesRegex("Кадр 1\n - .*Кадр 2\n - .*Количество ошибок: 2\n"));
    EXPECT_EQ("workbench-cli: c.gai: has frames that do not fit; --force writes it\n", refused.errors);
    EXPECT_EQ(5U, folder.EntryCount()) << "no c.gai";
}

TEST_F(CliTest, HaiAndAnimateKeepEveryPixel)
{
    const FrameBuf first = MakePicture(128, 128, 0xFFFF0000);
    const FrameBuf second =
        MakePicture(128, 128, [](int x, int y) { return x < y ? 0xFF0000FF : 0xFFFF0000; });
    folder.AddPng("а", first);
    folder.AddPng("б", second);
    folder.AddPng("в", MakePicture(128, 128, [](int x, int) { return x == 0 ? 0U : 0xFF0000FF; }));
    ExpectDone(u"hai Бум.hai а б"_qs);
    ExpectDone(u"export Бум.hai к.png --all"_qs);
    EXPECT_EQ(first.Pixels, ReadBack(u"к_000.png"_qs, "PNG").Pixels);
    EXPECT_EQ(second.Pixels, ReadBack(u"к_001.png"_qs, "PNG").Pixels);
    folder.Put("Бум.hai", folder.Get("Бум.hai").substr(0, 17460));
    ExpectFails(u"export Бум.hai к.png --all --force"_qs, "Бум.hai: lacks 1 of its frames");
    ExpectFails(u"export Бум.hai к.png --frame 1"_qs, "Бум.hai: has no frame 1");
    folder.AddGi("бум.gi", first, 0, 0);
    ExpectDone(u"animate бум.GAI а б"_qs);
    ExpectDone(u"export бум.GAI к.png --frame 1"_qs);
    EXPECT_EQ(second.Pixels, ReadBack(u"к.png"_qs, "PNG").Pixels);
    EXPECT_EQ(
        "128 pixel(s) of 1 frame(s) will look different: they are transparent where the picture before is "
        "not\n",
        Run(u"animate огонь.x а б в"_qs).out);
    EXPECT_EQ(0, ReadBack(u"огонь_000.png"_qs, "PNG").Pixels[3]);
    EXPECT_EQ(12U, folder.EntryCount());
}

TEST_F(CliTest, ExportNamesItsFilesAndKeepsTheQuality)
{
    folder.AddPng("a", MakeSprite(0));
    // A document of one frame gives the title alone.
    for (const QString &name : {u"Кадр.1.PNG"_qs, u"Что?*12:30*.png"_qs, u".png"_qs})
        for (const QString &which : {u" --frame 0"_qs, u" --all"_qs}) {
            ExpectDone(u"export a "_qs + name + which);
            EXPECT_TRUE(std::filesystem::remove(folder.Native(name.toStdString()))) << name.toStdString();
        }
    EXPECT_EQ(1U, folder.EntryCount()) << "nothing under any other name";
    folder.Put("\xFF", folder.Get("a")); // no UTF-8
    EXPECT_EQ(0, RunInShell(u"n=$(printf '\\377'); \"$0\" export $n $n.jpg"_qs));
    EXPECT_FALSE(folder.Get("\xFF.jpg").empty());
    std::size_t smaller = 0;
    for (const char *quality : {"0", "50", "100"}) {
        ExpectDone(u"export a a.JPE --force --quality "_qs + QLatin1String(quality));
        EXPECT_EQ(23, ReadBack(u"a.JPE"_qs, "JPG").Height);
        EXPECT_GT(folder.Get("a.JPE").size(), smaller) << quality;
        ExpectDone(u"export a all.JPE --all --force --quality "_qs + QLatin1String(quality));
        EXPECT_EQ(folder.Get("a.JPE"), folder.Get("all.JPE"));
        smaller = folder.Get("a.JPE").size();
    }
}

TEST_F(CliTest, WhatIsRefusedOrFailsLeavesTheOutputAlone)
{
    folder.AddPng("0", MakeSprite(0));
    folder.AddPng("2", MakeSprite(2));
    folder.Put("обрывок", folder.Get("0").substr(0, 30));
    folder.Put("пусто", "");
    folder.Put("мусор.dat", "ZL01");
    folder.Put("дерево", R"({"zl": true, "root": {"kind": "pairs", "children": [{"type": 1, "name": "\n)" +
                             std::string(999, 'b') + "\"}]}}");
    folder.Put("обман.pkg", folder.Get("0"));
    PutArchive("а.pkg", "cli/archive.txt");
    folder.MakeFolder("папка");
    folder.MakeFolder("кадры_000.png");
    folder.Put("старый.png", "older");
    folder.Put("Новый_001.png", "older");
    folder.AddPng("малый", MakePicture(37, 22, 0xFF000000));
    for (const TableRow &row : ReadTable("cli/failures.txt", 2))
        for (const QString &out : {u"старый.png"_qs, u"новый.png"_qs})
            ExpectFails(row.Text(0).replace(u"OUT"_qs, out), row.Bytes(1));
    EXPECT_EQ("older", folder.Get("старый.png"));
    EXPECT_EQ(13U, folder.EntryCount());
    ExpectDone(u"export --all 0 старый.png --force"_qs);
    EXPECT_EQ(23, ReadBack(u"старый.png"_qs, "PNG").Height);
}

} // namespace wb
