#include "app/startup.h"
#include "platform/nativepath.h"
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
    EXPECT_FALSE(LoadLibraries(empty.Native(), dialogs));

    const std::uint8_t text[] = {'n', 'o'};
    empty.AddBytes(QStringLiteral("RastGL.dll"), text);
    dialogs.expectedErrors = {{QStringLiteral("RastGL.dll not found."), QStringLiteral("Error")}};
    EXPECT_FALSE(LoadLibraries(empty.Native(), dialogs));
}

TEST(Startup, AFolderPartBecomesTheCurrentFolder)
{
    const QString before = QDir::currentPath();
    const SampleFolder folder;
    folder.AddFolder(QStringLiteral("Графика"));

    const CommandLine file = ReadCommandLine(folder.Native(QStringLiteral("Графика/x.gi")));
    EXPECT_EQ(folder.Path(QStringLiteral("Графика")), file.folder);
    EXPECT_EQ(QStringLiteral("x.gi"), file.name);

    const CommandLine bare = ReadCommandLine(QStringLiteral("y.gi"));
    EXPECT_EQ(file.folder, bare.folder);
    EXPECT_EQ(QStringLiteral("y.gi"), bare.name);

    const CommandLine only = ReadCommandLine(folder.Native());
    EXPECT_EQ(folder.Path(), only.folder);
    EXPECT_TRUE(only.name.isEmpty());
    QDir::setCurrent(before);
}

} // namespace

} // namespace wb
