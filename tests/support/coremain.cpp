// Runs the tests of a core folder with the graphics library loaded from beside the test program.
#include "gfx/graphicslibrary.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    const QCoreApplication application(argc, argv);
    if (!wb::LoadGraphicsLibrary(QCoreApplication::applicationDirPath())) {
        fprintf(stderr, "%s not found beside the test program\n", wb::GraphicsLibraryFile);
        return 2;
    }
    const int result = RUN_ALL_TESTS();
    wb::UnloadGraphicsLibrary();
    return result;
}
