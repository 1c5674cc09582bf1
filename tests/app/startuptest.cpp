#include "app/startup.h"
#include "support/samplefolder.h"
#include "support/scripteddialogs.h"

#include <QDir>

namespace wb
{

namespace
{

TEST(Startup, AMissingLibraryIsNamedAndEndsTheStart)
{
    const SampleFolder empty;
    ScriptedDialogs dialogs;
    dialogs.expectedErrors = {{QStringLiteral("RastGL.dll not found."), QStringLiteral("Error")}};
    EXPECT_FALSE(LoadLibraries(empty.NativeText(), dialogs));

    empty.Put("RastGL.dll", "no");
    dialogs.expectedErrors = {{QStringLiteral("RastGL.dll not found."), QStringLiteral("Error")}};
    EXPECT_FALSE(LoadLibraries(empty.NativeText(), dialogs));
}

TEST(Startup, AFolderPartBecomesTheCurrentFolder)
{
    const QString before = QDir::currentPath();
    const SampleFolder folder;
    folder.MakeFolder("Графика");

    const CommandLine file = ReadCommandLine(folder.NativeText("Графика/x.gi"));
    EXPECT_EQ(folder.Path(QStringLiteral("Графика")), file.folder);
    EXPECT_EQ(QStringLiteral("x.gi"), file.name);

    const CommandLine bare = ReadCommandLine(QStringLiteral("y.gi"));
    EXPECT_EQ(file.folder, bare.folder);
    EXPECT_EQ(QStringLiteral("y.gi"), bare.name);

    const CommandLine only = ReadCommandLine(folder.NativeText());
    EXPECT_EQ(folder.Path(), only.folder);
    EXPECT_TRUE(only.name.isEmpty());
    QDir::setCurrent(before);
}

} // namespace

} // namespace wb
