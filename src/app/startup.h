// From the start of the process to its end.
#pragma once

#include <QString>

namespace wb
{

class Dialogs;

// Loads the libraries that lie in `folder` (a native path). When one is missing, an error box names it and
// the result is False: the program ends.
bool LoadLibraries(const QString &folder, Dialogs &dialogs);
void UnloadLibraries();

// What the command line asks for. A folder part becomes the current folder, as when a registered file is
// opened.
struct CommandLine {
    QString folder; // path of the program
    QString name;   // a file in it, or empty
};
CommandLine ReadCommandLine(const QString &argument); // the text of FromNativeText

} // namespace wb
