#include "app/startup.h"
#include "platform/nativepath.h"
#include "sound/soundlibrary.h"
#include "support/samplefolder.h"
#include "support/scripteddialogs.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QUrl>

namespace wb
{

namespace
{

TEST(Startup, AMissingLibraryIsNamedAndEndsTheStart)
{
    const SampleFolder folder;
    ScriptedDialogs dialogs;
    const auto expectMissing = [&](const char *file) {
        dialogs.expectedErrors = {
            {QLatin1String(file) + QStringLiteral(" not found."), QStringLiteral("Error")}};
        EXPECT_FALSE(LoadLibraries(folder.NativeText(), dialogs));
    };
    expectMissing("Sound.dll");
    folder.Put("Sound.dll", "no");
    folder.Put("RastGL.dll", "no");
    expectMissing("Sound.dll");
    const QString built = QCoreApplication::applicationDirPath();
    std::filesystem::remove(folder.Native("Sound.dll"));
    ASSERT_TRUE(QFile::copy(built + QStringLiteral("/Sound.dll"), folder.NativeText("Sound.dll")));
    expectMissing("RastGL.dll");
    EXPECT_FALSE(IsSoundLibraryLoaded());
    ASSERT_TRUE(LoadSoundLibrary(built)) << "for the other tests";
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
    folder.MakeFolder("\xFF");
    const CommandLine old = ReadCommandLine(FromNativeText(folder.Native("\xFF/\xD4.gi")));
    EXPECT_EQ(folder.Path(FromNativeName("\xFF")) + u'\\' + FromNativeName("\xD4.gi"),
              old.folder + u'\\' + old.name);
    EXPECT_EQ(FromNativeName("y:z.gi"), ReadCommandLine(QStringLiteral("y:z.gi")).name);
    EXPECT_EQ(QString(), ReadCommandLine(QStringLiteral("missing/x.gi")).name);

    const CommandLine only = ReadCommandLine(folder.NativeText());
    EXPECT_EQ(folder.Path(), only.folder);
    EXPECT_TRUE(only.name.isEmpty());
    QDir::setCurrent(before);
}

} // namespace

} // namespace wb
