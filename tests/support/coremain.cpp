// Runs the tests of a core folder with the libraries loaded from beside the test program.
#include "gfx/graphicslibrary.h"
#include "sound/soundlibrary.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    const QCoreApplication application(argc, argv);
    const QString folder = QCoreApplication::applicationDirPath();
    if (!wb::LoadSoundLibrary(folder) || !wb::LoadGraphicsLibrary(folder)) {
        fprintf(stderr, "the libraries are not beside the test program\n");
        return 2;
    }
    const int result = RUN_ALL_TESTS();
    wb::UnloadGraphicsLibrary();
    wb::UnloadSoundLibrary();
    return result;
}
