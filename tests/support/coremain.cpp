// Runs the tests of a core folder.
#include "support/withlibraries.h"

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    const QCoreApplication application(argc, argv);
    return wb::RunTestsWithLibraries();
}
