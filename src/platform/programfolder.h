// Folders that the running program knows without being told.
#pragma once

#include <QString>
#include <string>

namespace wb
{

// The folder that holds the running program's file, without a separator at its end.
std::string NativeProgramFolder();
QString ProgramFolder();

// Whether the native path leads into what belongs to the system's packages, whoever may write there
// (Filesystem Hierarchy Standard: /usr, /opt).
bool IsSystemFolder(const std::string &path);

// The folder for this user's own settings of the program (XDG Base Directory Specification:
// $XDG_CONFIG_HOME/workbench, else ~/.config/workbench). It need not exist. Empty for a user without a home.
QString UserConfigFolder();

} // namespace wb
