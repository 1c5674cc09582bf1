#include "app/startup.h"
#include "platform/nativepath.h"
#include "support/samplefolder.h"
#include "support/scripteddialogs.h"

#include <QDir>
#include <QUrl>

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
    folder.MakeFolder("Графика 1");
    const QString inner = folder.Path(QStringLiteral("Графика 1"));
    const QString native = folder.NativeText("Графика 1/x.gi");

    for (const QString &argument :
         {native, QUrl::fromLocalFile(native).toString(QUrl::FullyEncoded), inner + QStringLiteral("\\x.gi"),
          QStringLiteral("x.gi") /* now from the current folder */}) {
        const CommandLine file = ReadCommandLine(argument);
        EXPECT_EQ(inner, file.folder) << argument.toStdString();
        EXPECT_EQ(QStringLiteral("x.gi"), file.name) << argument.toStdString();
    }
    EXPECT_EQ(FromNativeName("y:z.gi"), ReadCommandLine(QStringLiteral("y:z.gi")).name);
    EXPECT_EQ(QString(), ReadCommandLine(QStringLiteral("missing/x.gi")).name);

    const CommandLine only = ReadCommandLine(folder.NativeText());
    EXPECT_EQ(folder.Path(), only.folder);
    EXPECT_TRUE(only.name.isEmpty());
    QDir::setCurrent(before);
}

} // namespace

} // namespace wb
