// Runs benchmarks of the core with the graphics library loaded from beside the program.
#include "gfx/graphicslibrary.h"

#include <QCoreApplication>
#include <benchmark/benchmark.h>

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    if (!wb::LoadGraphicsLibrary(QCoreApplication::applicationDirPath()))
        return 2;
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    wb::UnloadGraphicsLibrary();
    return 0;
}
