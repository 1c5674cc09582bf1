// Runs window tests in the program's own look, with the graphics library loaded.
#include "app/skin.h"
#include "gfx/graphicslibrary.h"

#include <QApplication>
#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    wb::ApplySkin(application);
    if (!wb::LoadGraphicsLibrary(QApplication::applicationDirPath())) {
        fprintf(stderr, "%s not found beside the test program\n", wb::GraphicsLibraryFile);
        return 2;
    }
    const int result = RUN_ALL_TESTS();
    wb::UnloadGraphicsLibrary();
    return result;
}
