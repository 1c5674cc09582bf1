// Runs window tests in the program's own look.
#include "app/skin.h"
#include "support/withlibraries.h"

#include <QApplication>

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    qputenv("SDL_AUDIODRIVER", "dummy"); // nobody is to hear them
    QApplication application(argc, argv);
    wb::ApplySkin(application);
    return wb::RunTestsWithLibraries();
}
