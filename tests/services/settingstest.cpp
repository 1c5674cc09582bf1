#include "services/settings.h"
#include "platform/ansi.h"
#include "services/uitext.h"
#include "support/fulldisk.h"
#include "support/table.h"
#include "support/tempfolder.h"

#include <random>

using namespace wb;

namespace
{

// A settings file as the program writes it, from a text beside the tests.
ByteArray SettingsFile(const char *name)
{
    const QString text = QString::fromStdString(ReadFixture(name));
    return ToAnsi(QString(text).replace(u"\n"_qs, u"\r\n"_qs));
}

Settings Parse(std::string_view text)
{
    return ParseSettings(BytesOf(text));
}

std::string Written(const Settings &settings)
{
    return TextOf(FormatSettings(settings));
}

TEST(Settings, FileHasItsLayoutAndComesBack)
{
    EXPECT_EQ(Written(DefaultSettings()), TextOf(SettingsFile("services/defaults.txt")));
    const ByteArray every = SettingsFile("services/everyfield.txt");
    EXPECT_EQ(Written(ParseSettings(every)), TextOf(every));
    EXPECT_EQ(ParseSettings(every).BackColor1, 0x030201);

    Settings sly;
    sly.Dir = u"C:\\a\r\nPKG=True"_qs;
    EXPECT_FALSE(Parse(Written(sly)).AssocPKG) << "a folder's name must not become a setting";
}

TEST(Settings, ValuesFallBack)
{
    for (const TableRow &row : ReadTable("services/values.txt", 3)) {
        const std::string written = Written(Parse(row.Bytes(0) + '=' + row.Bytes(1)));
        EXPECT_NE(written.find("\r\n" + row.Bytes(0) + '=' + row.Bytes(2) + "\r\n"), std::string::npos)
            << row.line;
    }
    EXPECT_EQ(ColorText(-1), u"#FFFFFF"_qs);
}

TEST(Settings, LinesAreForgiving)
{
    EXPECT_TRUE(Parse("autoplayanim = YES").AutoPlayAnim);
    EXPECT_EQ(Parse(""), Settings());
    EXPECT_EQ(Parse("no sign\nUnknown=1\n=x\n;GI=True\n"), Settings());
    const Settings twice = Parse("GI=True\rGAI=True\nGAI=False\r\n");
    EXPECT_TRUE(twice.AssocGI);
    EXPECT_FALSE(twice.AssocGAI);
}

TEST(Settings, DamagedFilesGiveValidRecords)
{
    std::mt19937 random(11);
    const ByteArray whole = SettingsFile("services/everyfield.txt");
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        for (int round = 0; round < 8; ++round) {
            ByteArray bytes(whole.begin(), whole.begin() + std::ptrdiff_t(length));
            for (int flips = round; flips > 0 && length > 0; --flips)
                bytes[random() % length] = std::uint8_t(random());
            const Settings settings = ParseSettings(bytes);
            ASSERT_TRUE(settings.SoundVolume >= 0 && settings.SoundVolume <= 100);
            ASSERT_TRUE(settings.BackColor1 >= 0 && settings.BackColor1 <= 0xFFFFFF);
            ASSERT_EQ(Parse(Written(settings)).SoundVolume, settings.SoundVolume);
        }
    }
}

TEST(Settings, AFileThatCannotBeReadNeverStopsTheStart)
{
    const TempFolder folder;
    const QString path = folder.Path(u"new\\Options.ini"_qs);
    EXPECT_EQ(LoadSettings(path), DefaultSettings());
    EXPECT_EQ(folder.Get("new/Options.ini"), Written(DefaultSettings())) << "written at once";
    const Settings every = ParseSettings(SettingsFile("services/everyfield.txt"));
    EXPECT_TRUE(SaveSettings(path, every));
    OnAFullDisk(100, [&] { EXPECT_FALSE(SaveSettings(path, Settings())); });
    EXPECT_EQ(LoadSettings(path), every) << "stays when a new one can't be written";

    folder.Put("empty", "");
    EXPECT_EQ(LoadSettings(folder.Path(u"empty"_qs)), Settings());
    folder.MakeFolder("folder");
    folder.MakePipe("pipe");
    for (const QString &name : {u"folder"_qs, u"pipe"_qs, u"empty\\x"_qs})
        EXPECT_EQ(LoadSettings(folder.Path(name)), DefaultSettings());
    EXPECT_FALSE(SaveSettings(folder.Path(u"empty\\x"_qs), Settings()));
}

TEST(Settings, LieWhereTheyCanBeWritten)
{
    const TempFolder folder;
    EXPECT_EQ(SettingsPathIn(folder.Path(), u"C:\\cfg"_qs), folder.Path(u"Options.ini"_qs));
    for (const QString &notOwn : {folder.Path(u"none"_qs), u"C:\\usr\\lib"_qs, u"C:\\opt\\x"_qs}) {
        EXPECT_EQ(SettingsPathIn(notOwn, u"C:\\cfg"_qs), u"C:\\cfg\\Options.ini"_qs);
        EXPECT_EQ(SettingsPathIn(notOwn, {}), QString());
    }
}

TEST(UiText, IndexesNameTheirTexts)
{
    EXPECT_EQ(UiText(0), u"Объектов: "_qs);
    EXPECT_EQ(UiText(TextKilobytes), u"Кб"_qs);
    EXPECT_EQ(UiText(TextUnpackerBusy), u"PKG UnPacker занят."_qs);
    EXPECT_EQ(UiText(TextErrors), u"Ошибки"_qs);
    EXPECT_EQ(UiText(40), u"Количество ошибок: "_qs);
    EXPECT_THROW(UiText(41), std::out_of_range);
    EXPECT_THROW(UiText(-1), std::out_of_range);
}

} // namespace
