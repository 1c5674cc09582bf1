// Runs window tests in the program's own look, with the libraries loaded.
#include "app/skin.h"
#include "gfx/graphicslibrary.h"
#include "sound/soundlibrary.h"

#include <QApplication>
#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    qputenv("SDL_AUDIODRIVER", "dummy"); // nobody is to hear them
    QApplication application(argc, argv);
    wb::ApplySkin(application);
    const QString folder = QApplication::applicationDirPath();
    if (!wb::LoadSoundLibrary(folder) || !wb::LoadGraphicsLibrary(folder)) {
        fprintf(stderr, "the libraries are not beside the test program\n");
        return 2;
    }
    const int result = RUN_ALL_TESTS();
    wb::UnloadGraphicsLibrary();
    wb::UnloadSoundLibrary();
    return result;
}
