// The registry, what the settings make of it, and how the desktop follows. Every folder is the test's own.
#include "services/associations.h"
#include "platform/clsregistryobject.h"
#include "platform/fileio.h"
#include "platform/linux/mimeapps.h"
#include "support/table.h"
#include "support/tempfolder.h"

using namespace wb;

namespace
{

const QString Classes = u"HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes\\"_qs;

class Associations : public testing::Test
{
protected:
    Associations()
    {
        ::setenv("XDG_DATA_HOME", home.Native("data").c_str(), 1);
        ::setenv("XDG_CONFIG_HOME", home.Native("config").c_str(), 1);
        home.MakeFolder("config");
        home.Put("config/mimeapps.list", Foreign);
    }

    // Brings all in line with the settings and waits for the desktop.
    static void Apply(bool pkg, bool gai)
    {
        Settings settings;
        settings.AssocPKG = pkg;
        settings.AssocGAI = gai;
        clsRegistryObject registry(RegistryFile());
        ApplyAssociations(settings, u"C:\\Мои игры"_qs, registry);
    }

    // Every file with its bytes, its number and its time.
    std::string State(const std::string &below) const
    {
        std::ostringstream state;
        for (const auto &entry : std::filesystem::recursive_directory_iterator(home.Native(below))) {
            if (!entry.is_regular_file())
                continue;
            const std::string path = entry.path().string();
            state << path.substr(home.Native().size()) << '\n'
                  << entry.last_write_time().time_since_epoch().count() << ' ';
            state << GetFileFacts(path).Number << '\n' << std::ifstream(path).rdbuf() << '\n';
        }
        return state.str();
    }

    static constexpr const char *Foreign =
        "[Default Applications]\ntext/plain=vim.desktop\napplication/x-workbench-gai=other.desktop;\n";
    TempFolder home;
};

TEST_F(Associations, TheRegistryTellsWhatIsOn)
{
    Apply(true, true);
    const clsRegistryObject kept(RegistryFile());
    for (const TableRow &row : ReadTable("services/associations.txt", 2))
        EXPECT_EQ(kept.Value(Classes + row.Text(0)), row.Text(1)) << row.line;
    Apply(false, true);
    clsRegistryObject changed(RegistryFile());
    EXPECT_FALSE(changed.DeleteKey(Classes + u".pkg"_qs) || changed.DeleteKey(Classes + u"PKGFile"_qs));
    EXPECT_EQ(changed.Value(Classes + u".gai"_qs), u"GAIFile"_qs);
}

TEST_F(Associations, TheDesktopFollowsAndIsLeftAlone)
{
    Apply(true, true);
    const std::string entry = home.Get("data/applications/workbench-files.desktop");
    EXPECT_NE(entry.find("\nExec=\"/Мои игры/workbench\" %f\n"), std::string::npos) << entry;
    EXPECT_NE(entry.find("\nMimeType=application/x-workbench-pkg;application/x-workbench-gai;\n"),
              std::string::npos);
    EXPECT_NE(home.Get("data/mime/globs2").find("60:application/x-workbench-gai:*.gai\n"), std::string::npos);
    EXPECT_EQ(home.Get("data/icons/hicolor/scalable/mimetypes/application-x-workbench-pkg.svg"),
              ReadFixture("../resources/icons/pkg.svg"));
    EXPECT_EQ(home.Get("config/mimeapps.list"),
              "[Default Applications]\napplication/x-workbench-pkg=workbench-files.desktop;\n"
              "text/plain=vim.desktop\n"
              "application/x-workbench-gai=workbench-files.desktop;other.desktop;\n");

    const std::string settled = State("");
    Apply(true, true);
    EXPECT_EQ(State(""), settled) << "nothing is done again";

    home.Put("config/mimeapps.list", Foreign); // and whatever else undid it
    std::filesystem::remove(home.Native("data/mime/application/x-workbench-gai.xml"));
    Apply(true, true);
    EXPECT_NE(home.Get("config/mimeapps.list"), Foreign);
    EXPECT_NE(home.Get("data/mime/application/x-workbench-gai.xml"), "");

    Apply(false, false);
    EXPECT_EQ(home.Get("config/mimeapps.list"), Foreign);
    EXPECT_EQ(State("data").find("workbench"), std::string::npos) << State("data");
}

TEST_F(Associations, WhatCannotBeWrittenStopsNothing)
{
    home.Put("data", "no folder");
    const std::string large(5 << 20, '#');
    home.Put("config/mimeapps.list", large);
    Apply(true, true);
    EXPECT_EQ(home.Get("data"), "no folder");
    EXPECT_TRUE(home.Get("config/mimeapps.list") == large);
}

TEST_F(Associations, TheRegistryKeepsKeysAndValues)
{
    const std::string file = home.Native("new/registry.json");
    const QString user = u"HKEY_CURRENT_USER\\A\\b"_qs;
    clsRegistryObject registry(file);
    EXPECT_FALSE(registry.SetValue(u"HKEY_LOCAL_MACHINES\\A"_qs, {}, u"x"_qs));
    EXPECT_FALSE(registry.SetValue(u"A"_qs, {}, u"x"_qs));
    EXPECT_TRUE(registry.SetValue(user + u'\\', u"Lines"_qs, u"1\r\n2"_qs, RegistryType::Lines));
    EXPECT_TRUE(registry.SetValue(user.toLower().replace(u"hkey_current_user"_qs, u"HKEY_CURRENT_USER"_qs),
                                  {}, u"default"_qs));
    EXPECT_TRUE(registry.SetValue(user + u"bb"_qs, {}, u"beside"_qs));
    registry.Publish();
    clsRegistryObject again(file);
    EXPECT_EQ(again.Value(user), u"default"_qs);
    EXPECT_EQ(again.Value(user, u"Lines"_qs), u"1\r\n2"_qs);
    EXPECT_TRUE(again.DeleteKey(u"hkey_current_user\\a\\B"_qs));
    EXPECT_FALSE(again.DeleteKey(user));
    EXPECT_EQ(again.Value(user + u"bb"_qs), u"beside"_qs);
    for (const char *damaged :
         {"", "{", "[1]", R"({"HKEY_USERS\\a": 3})", R"({"HKEY_USERS\\a": {"": {}}})"}) {
        home.Put("new/registry.json", damaged);
        EXPECT_EQ(clsRegistryObject(file).Value(u"HKEY_USERS\\a"_qs), QString()) << damaged;
    }
}

TEST(MimeApps, OneChoiceComesAndGoes)
{
    for (const TableRow &row : ReadTable("services/mimeapps.txt", 3)) {
        const QByteArray with = WithDefault(QByteArray::fromStdString(row.Bytes(0)), "a/b", "e.desktop");
        EXPECT_EQ(with.toStdString(), row.Bytes(1)) << row.line;
        EXPECT_EQ(WithDefault(with, "a/b", "e.desktop"), with) << row.line;
        EXPECT_EQ(WithoutDefault(with, "a/b", "e.desktop").toStdString(), row.Bytes(2)) << row.line;
    }
}

} // namespace
