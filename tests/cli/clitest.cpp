// Runs of workbench-cli as a script sees them.
#include "gfx/pixels.h"
#include "gi/giformat.h"
#include "support/samplefolder.h"
#include "viewer/documentloader.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <gmock/gmock.h>

#include <cstdlib>

namespace wb
{

namespace
{

constexpr int Clear = 1; // transparency classes
constexpr int Graded = 2;

class CliTest : public testing::Test
{
protected:
    struct Result {
        int status = -1; // -1: it did not start, hung or crashed
        std::string out;
        std::string errors;
    };

    // Runs in the folder, with arguments as a shell would part them.
    Result Run(const std::string &line, const QString &output = {}) const
    {
        QProcess program;
        program.setWorkingDirectory(folder.NativeText());
        if (!output.isEmpty())
            program.setStandardOutputFile(output);
        program.start(QCoreApplication::applicationDirPath() + u"/workbench-cli"_qs,
                      QString::fromStdString(line).split(u' ', Qt::SkipEmptyParts));
        const bool ended = program.waitForFinished() && program.exitStatus() == QProcess::NormalExit;
        return {ended ? program.exitCode() : -1, program.readAllStandardOutput().toStdString(),
                program.readAllStandardError().toStdString()};
    }

    void ExpectDone(const std::string &line) const
    {
        const Result run = Run(line);
        EXPECT_EQ(0, run.status) << line;
        EXPECT_EQ("", run.out + run.errors) << line;
    }

    void ExpectFails(const std::string &line, const std::string &message, const QString &output = {}) const
    {
        const Result run = Run(line, output);
        EXPECT_EQ(1, run.status) << line;
        EXPECT_EQ("", run.out) << line;
        EXPECT_EQ("workbench-cli: " + message + '\n', run.errors) << line;
    }

    FrameBuf ReadBack(const QString &name, const char *kind) const
    {
        const FrameSet document = OpenDocumentFile(folder.Path(name));
        EXPECT_EQ(kind, document.Kind);
        return document.Count == 0 ? FrameBuf() : DibToFrameBuf(document.Pictures[0]);
    }

    SampleFolder folder;
};

// Every channel runs through its range in steps of `step`.
FrameBuf Gradient(int transClass, int step)
{
    return MakePicture(64, 64, [=](int x, int y) -> std::uint32_t {
        const auto channel = [step](int value) { return std::uint32_t(value * 4 / step * step); };
        const std::uint32_t alpha = transClass == Graded && x >= 32 ? channel(y) + 1 : 255;
        const bool isHole = transClass != 0 && (x / 8 + y / 8) % 3 == 0;
        return isHole ? 0 : alpha << 24 | channel(x) << 16 | channel(y) << 8 | channel(63 - x);
    });
}

// Whether only what 6 bits of alpha and premultiplied 5-6-5 colours round away was lost.
bool IsNear(const std::uint8_t *from, const std::uint8_t *back)
{
    bool near = std::abs(from[3] - back[3]) <= (from[3] == 0 || from[3] == 255 ? 0 : 4);
    for (int at = 0; at < 3; ++at)
        near = near && std::abs(from[at] * from[3] - back[at] * back[3]) <= (at == 1 ? 5 : 9) * 255;
    return near;
}

} // namespace

TEST_F(CliTest, TellsItsUsage)
{
    EXPECT_THAT(Run("--version").out, testing::MatchesRegex("workbench-cli [0-9]+\\.[0-9]+\\.[0-9]+\n"));
    for (const auto &[command, usage] :
         {std::pair("", "COMMAND [OPTIONS] ARGUMENTS\n"), std::pair("info", "info [options] FILE\n"),
          std::pair("export", "export [options] FILE OUT\n"), std::pair("gi", "gi [options] PNG OUT.gi\n")}) {
        const Result help = Run(command + std::string(" --help"));
        EXPECT_EQ(0, help.status);
        EXPECT_THAT(help.out, testing::StartsWith(std::string("Usage: workbench-cli ") + usage));
    }
    ExpectFails("--help", "standard output: can't be written", u"/dev/full"_qs);

    const std::pair<std::string, std::vector<std::string>> wrong[] = {
        {"", {"", "frobnicate", "--frobnicate", "info", "info a b", "info --colour a"}},
        {"export a", {"", " b", " b.gif", " b.png/c", " b.png --frame -1", " b.png --frame"}},
        {"export a b.png", {" --all --frame 0", " --quality 101", " --quality -1", " --quality x", " c"}},
        {"gi a b", {"", " --type 5", " --type -1", " --type x", " c --type 0"}},
        {"gi a b --type 0 --at", {"", " 1", " 1,2,3", " -1,0", " 0,100000"}}};
    for (const auto &[start, ends] : wrong)
        for (const std::string &end : ends) {
            const Result run = Run(start + end);
            EXPECT_EQ(2, run.status) << start << end;
            EXPECT_EQ("", run.out);
            EXPECT_THAT(run.errors, testing::ContainsRegex("^workbench-cli: [^\n]+\n$"));
        }
}

TEST_F(CliTest, InfoTellsAllFieldsOrFails)
{
    FrameBuf sprite = MakePicture(7, 4, 0x80FFFFFF);
    sprite.X = 12;
    sprite.Y = 34;
    folder.AddPng("Картинка.png", sprite);
    folder.AddGi("Спрайт.gi", sprite, 2, Graded);
    const std::string frame = "\nframe 0: 7 x 4, 32 bits per pixel";
    EXPECT_EQ("PNG, frames: 1" + frame + '\n', Run("info Картинка.png").out);
    EXPECT_EQ("GI, frames: 1\nat 12,34 to 19,38" + frame + ", type 2\n", Run("info Спрайт.gi").out);
    for (const auto &[name, json] :
         {std::pair("Картинка.png",
                    R"({"kind":"PNG","count":1,"info":"","frames":[{"width":7,"height":4,"bpp":32}]})"),
          std::pair("Спрайт.gi", R"({"kind":"GI","count":1,"info":"2","left":12,"top":34,"right":19,)"
                                 R"("bottom":38,"frames":[{"width":7,"height":4,"bpp":32,"type":2}]})")}) {
        const Result run = Run(std::string("info --json ") + name);
        EXPECT_EQ(QJsonDocument::fromJson(json), QJsonDocument::fromJson(run.out.c_str())) << run.out;
    }
    folder.Put("пусто", "");
    folder.Put("обрывок", "\x89PNG\r\n\x1A\n");
    for (const std::string name : {"нет", ".", "пусто"})
        ExpectFails("info " + name, name + ": can't be read or is empty");
    ExpectFails("info --json обрывок", "обрывок: is of no kind that can be read");
}

TEST_F(CliTest, GiAndExportKeepEveryPixelThatTheTypeHolds)
{
    // Type, transparency class, step (wide where a palette has to hold all colours), whether every bit stays.
    const std::vector<std::tuple<int, int, int, bool>> cases = {
        {0, 0, 4, false},      {0, Clear, 4, true},   {0, Graded, 4, true},   {1, Clear, 4, false},
        {2, Clear, 4, false},  {2, Graded, 4, false}, {3, Clear, 128, false}, {3, Graded, 128, false},
        {4, Clear, 128, true}, {4, Graded, 128, true}};
    for (const auto &[type, transClass, step, exact] : cases) {
        const FrameBuf source = Gradient(transClass, step);
        folder.AddPng("вход.png", source);
        ExpectDone("gi вход.png спрайт.gi --force --type " + std::to_string(type));
        ExpectDone("export спрайт.gi выход.png --force");
        const FrameBuf back = ReadBack(u"выход.png"_qs, "PNG");
        ASSERT_EQ(source.Pixels.size(), back.Pixels.size());
        int lost = 0;
        for (std::size_t at = 0; at < source.Pixels.size(); at += 4) {
            const std::uint8_t *from = &source.Pixels[at];
            lost += (exact ? std::equal(from, from + 4, &back.Pixels[at]) : IsNear(from, &back.Pixels[at]))
                        ? 0
                        : 1;
        }
        EXPECT_EQ(0, lost) << "type " << type << ", class " << transClass;
    }
}

TEST_F(CliTest, GiIsPlacedAndCropped)
{
    const FrameBuf source = MakePicture(20, 10, [](int x, int y) { return x / 3 == 2 && y > 1 ? ~0U : 0U; });
    folder.AddPng("a.png", source);
    const GiRect whole = {100, 99999, 120, 100009};
    for (const auto &[crop, layer] :
         {std::pair("", whole), std::pair(" --crop", GiRect{106, 100001, 109, 100009})}) {
        ExpectDone(std::string("gi a.png a.gi --force --type 1 --at 100,99999") + crop);
        const std::string bytes = folder.Get("a.gi");
        const GiHeader header = ReadGiHeader(BytesOf(bytes), 0).value_or(GiHeader());
        EXPECT_EQ(whole, header.Bounds);
        EXPECT_EQ(layer, header.Layers[0].Bounds);
        EXPECT_EQ(source.Pixels, ReadBack(u"a.gi"_qs, "GI").Pixels);
    }
}

TEST_F(CliTest, ExportNamesItsFilesAndKeepsTheQuality)
{
    folder.AddPng("a", Gradient(0, 4));
    // A document of one frame gives the title alone.
    for (const std::string name : {"Кадр.1.PNG", "Что?*12:30*.png", ".png"})
        for (const char *which : {" --frame 0", " --all"}) {
            ExpectDone("export a " + name + which);
            EXPECT_TRUE(std::filesystem::remove(folder.Native(name))) << name << which;
        }
    EXPECT_EQ(1U, folder.EntryCount()) << "nothing under any other name";
    std::size_t smaller = 0;
    for (const std::string quality : {"0", "50", "100"}) {
        ExpectDone("export a a.JPE --force --quality " + quality);
        EXPECT_EQ(64, ReadBack(u"a.JPE"_qs, "JPG").Height);
        EXPECT_GT(folder.Get("a.JPE").size(), smaller) << quality;
        ExpectDone("export a all.JPE --all --force --quality " + quality);
        EXPECT_EQ(folder.Get("a.JPE"), folder.Get("all.JPE"));
        smaller = folder.Get("a.JPE").size();
    }
}

TEST_F(CliTest, WhatIsRefusedOrFailsLeavesTheOutputAlone)
{
    for (const int transClass : {0, Clear, Graded})
        folder.AddPng(std::to_string(transClass), Gradient(transClass, 4));
    folder.Put("обрывок", folder.Get("0").substr(0, 30));
    folder.Put("старый.png", "older");
    for (const std::string to : {" старый.png --force", " новый.png --force"}) {
        for (const auto &[from, type] : {std::pair("0", "1"), std::pair("0", "2"), std::pair("0", "3"),
                                         std::pair("0", "4"), std::pair("2", "1")})
            ExpectFails(std::string("gi --type ") + type + ' ' + from + to,
                        std::string(from) + ": its transparency does not allow type " + type);
        for (const char *from : {"обрывок", "нет", "."}) {
            ExpectFails(std::string("gi --type 0 ") + from + to,
                        std::string(from) + ": is no PNG that can be read");
            ExpectFails(std::string("export ") + from + to,
                        std::string(from) + ": is no picture that can be read");
        }
        ExpectFails("export --frame 1 0" + to, "0: has no frame 1");
    }
    for (const std::string call : {"gi --type 0 0 ", "export 0 ", "export --all 0 "}) {
        ExpectFails(call + "старый.png", "старый.png: is already there; --force replaces it");
        ExpectFails(call + "нет/a.jpg", "нет/a.jpg: can't be written");
    }
    EXPECT_EQ("older", folder.Get("старый.png"));
    EXPECT_EQ(5U, folder.EntryCount());
    ExpectDone("export --all 0 старый.png --force");
    EXPECT_EQ(64, ReadBack(u"старый.png"_qs, "PNG").Width);
}

} // namespace wb
