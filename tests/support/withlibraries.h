// Tests that need the libraries.
#pragma once

#include "gfx/graphicslibrary.h"
#include "sound/soundlibrary.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

namespace wb
{

// Runs all tests with the libraries loaded from beside the test program; gives the program's exit status.
inline int RunTestsWithLibraries()
{
    const QString folder = QCoreApplication::applicationDirPath();
    if (!LoadSoundLibrary(folder) || !LoadGraphicsLibrary(folder)) {
        fprintf(stderr, "the libraries are not beside the test program\n");
        return 2;
    }
    const int result = RUN_ALL_TESTS();
    UnloadGraphicsLibrary();
    UnloadSoundLibrary();
    return result;
}

} // namespace wb
