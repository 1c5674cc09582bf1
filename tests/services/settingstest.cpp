#include "common/files.h"
#include "platform/ansi.h"
#include "services/settings.h"
#include "services/uitext.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>
#include <random>
#include <sys/stat.h>

using namespace wb;

namespace
{

constexpr std::string_view DefaultFile =
    ";General\r\nAutoPlayAnim=False\r\nAutoPlaySound=False\r\nAFTColor=#000000\r\nBackColor1=#EBE9ED\r\n"
    "BackColor2=#000000\r\nSoundVolume=100\r\nJPEGQuality=0\r\nAltGAIMethod=False\r\nViewOnTop=False\r\n"
    "ViewDrawOnly=False\r\nDrawStretch=False\r\n\r\n;Associations\r\nAFT=False\r\nGI=False\r\nGAI=False\r\n"
    "HAI=False\r\nPKG=False\r\n\r\n;Paths\r\nDir=\r\nOpenDir=\r\nPack_Folder=\r\nPack_FileName=\r\n"
    "UnPack_FileName=\r\nUnPack_Folder=\r\n";

Settings Parse(std::string_view text)
{
    return ParseSettings(BytesOf(text));
}

Settings EveryFieldSet()
{
    Settings settings;
    settings.AutoPlayAnim = settings.AltGAIMethod = settings.ViewDrawOnly = settings.AssocGI = true;
    settings.AssocAFT = settings.DrawStretch = true;
    settings.BackColor1 = 0x030201;
    settings.BackColor2 = 255;
    settings.AFTColor = 0xFFFFFF;
    settings.SoundVolume = 1;
    settings.JPEGQuality = 99;
    settings.Dir = u"C:\\Игра\\data"_qs;
    settings.OpenDir = u"D:\\a b"_qs;
    settings.Pack_Folder = u"C:\\1"_qs;
    settings.Pack_FileName = u"C:\\2=3.pkg"_qs;
    settings.UnPack_FileName = u"C:\\4.pkg"_qs;
    settings.UnPack_Folder = u"C:\\5"_qs;
    return settings;
}

TEST(Settings, FileHasItsLayoutAndComesBack)
{
    const ByteArray file = FormatSettings(DefaultSettings());
    EXPECT_EQ(std::string(file.begin(), file.end()), DefaultFile);
    EXPECT_EQ(ParseSettings(file), DefaultSettings());
    EXPECT_EQ(ParseSettings(FormatSettings(EveryFieldSet())), EveryFieldSet());

    Settings sly;
    sly.Dir = u"C:\\a\r\nPKG=True"_qs;
    EXPECT_FALSE(ParseSettings(FormatSettings(sly)).AssocPKG) << "a folder's name must not become a setting";
}

TEST(Settings, ValuesFallBack)
{
    const std::pair<const char *, std::int32_t> numbers[] = {
        {"250", 100},       {"-5", 0},    {"abc", 0},  {"+7", 7},         {" 42 ", 42},
        {"42;comment", 42}, {"1e1", 0},   {"2.5", 2},  {"3.5", 4},        {"1.2.3", 0},
        {".", 0},           {"", 0},      {"- 5", 0},  {"000000012", 12}, {"0000000012", 0},
        {"999999999", 100}, {"1,000", 0}, {"0x10", 0}, {"\t5", 0},        {"inf", 0}};
    for (const auto &[text, volume] : numbers)
        EXPECT_EQ(Parse(std::string("SoundVolume=") + text).SoundVolume, volume) << text;

    const std::pair<const char *, std::int32_t> colors[] = {{"#FF", 0xFF},
                                                            {"FF0000", 0},
                                                            {"#FF0000", 0xFF},
                                                            {"#010203", 0x030201},
                                                            {"#0102", 0x0201},
                                                            {"#F", 0},
                                                            {"#01023", 0x0201},
                                                            {"#GG02", 0x0200},
                                                            {"#0102030405", 0x030201},
                                                            {"", 0},
                                                            {"#ffFFff;x", 0xFFFFFF}};
    for (const auto &[text, color] : colors)
        EXPECT_EQ(Parse(std::string("BackColor1=") + text).BackColor1, color) << text;

    for (const char *text : {"yes", "TRUE", " 1 ", "True;x"})
        EXPECT_TRUE(Parse(std::string("ViewOnTop=") + text).ViewOnTop) << text;
    for (const char *text : {"", "2", "no", "True x", "-1"})
        EXPECT_FALSE(Parse(std::string("ViewOnTop=") + text).ViewOnTop) << text;
    EXPECT_EQ(ColorText(255), u"#FF0000"_qs);
    EXPECT_EQ(ColorText(-1), u"#FFFFFF"_qs);
}

TEST(Settings, LinesAreForgiving)
{
    EXPECT_TRUE(Parse("autoplayanim = YES").AutoPlayAnim);
    EXPECT_EQ(Parse(""), Settings());
    EXPECT_EQ(Parse("no sign\nUnknown=1\n=x\n;GI=True\n"), Settings());
    const Settings twice = Parse("GI=True\rGAI=True\nGAI=False\r\nDir=C:\\a;b\nOpenDir=  x=y  ;z");
    EXPECT_TRUE(twice.AssocGI);
    EXPECT_FALSE(twice.AssocGAI);
    EXPECT_EQ(twice.Dir, u"C:\\a"_qs);
    EXPECT_EQ(twice.OpenDir, u"x=y"_qs);
}

TEST(Settings, DamagedFilesGiveValidRecords)
{
    std::mt19937 random(11);
    const ByteArray whole = FormatSettings(EveryFieldSet());
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        for (int round = 0; round < 8; ++round) {
            ByteArray bytes(whole.begin(), whole.begin() + std::ptrdiff_t(length));
            for (int flips = round; flips > 0 && length > 0; --flips)
                bytes[random() % length] = std::uint8_t(random());
            const Settings settings = ParseSettings(bytes);
            ASSERT_TRUE(settings.SoundVolume >= 0 && settings.SoundVolume <= 100);
            ASSERT_TRUE(settings.BackColor1 >= 0 && settings.BackColor1 <= 0xFFFFFF);
            ASSERT_EQ(ParseSettings(FormatSettings(settings)).SoundVolume, settings.SoundVolume);
        }
    }
}

TEST(Settings, AFileThatCannotBeReadNeverStopsTheStart)
{
    const TempFolder folder;
    const QString path = folder.Path(u"new\\Options.ini"_qs);
    EXPECT_EQ(LoadSettings(path), DefaultSettings());
    EXPECT_EQ(folder.Get("new/Options.ini"), DefaultFile) << "a missing file is written at once";
    EXPECT_TRUE(SaveSettings(path, EveryFieldSet()));
    EXPECT_EQ(LoadSettings(path), EveryFieldSet());

    folder.Put("empty", "");
    EXPECT_EQ(LoadSettings(folder.Path(u"empty"_qs)), Settings());
    folder.MakeFolder("folder");
    EXPECT_EQ(LoadSettings(folder.Path(u"folder"_qs)), DefaultSettings());
    ASSERT_EQ(::mkfifo(folder.Native("pipe").c_str(), 0600), 0);
    EXPECT_EQ(LoadSettings(folder.Path(u"pipe"_qs)), DefaultSettings());
    EXPECT_EQ(LoadSettings(folder.Path(u"empty\\x"_qs)), DefaultSettings());
    EXPECT_FALSE(SaveSettings(folder.Path(u"empty\\x"_qs), Settings()));
}

TEST(Settings, LieWhereTheyCanBeWritten)
{
    const TempFolder folder;
    EXPECT_EQ(SettingsPathIn(folder.Path(), u"C:\\cfg"_qs), folder.Path(u"Options.ini"_qs));
    EXPECT_EQ(SettingsPathIn(folder.Path(u"none"_qs), u"C:\\cfg"_qs), u"C:\\cfg\\Options.ini"_qs);
}

TEST(UiText, IndexesNameTheirTexts)
{
    const struct {
        UiTextIndex Name;
        int Index;
        QString Text;
    } cases[] = {{TextObjects, 0, u"Объектов: "_qs},
                 {TextKilobytes, 14, u"Кб"_qs},
                 {TextUnpackerBusy, 22, u"PKG UnPacker занят."_qs},
                 {TextErrors, 28, u"Ошибки"_qs},
                 {TextFramePrefix, 39, u"Кадр "_qs},
                 {TextErrorCount, 40, u"Количество ошибок: "_qs}};
    for (const auto &one : cases) {
        EXPECT_EQ(int(one.Name), one.Index);
        EXPECT_EQ(UiText(one.Index), one.Text);
    }
    EXPECT_THROW(UiText(41), std::out_of_range);
    EXPECT_THROW(UiText(-1), std::out_of_range);
}

} // namespace
