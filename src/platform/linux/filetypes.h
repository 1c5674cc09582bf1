// The program as the opener of its file types, for the desktop: what freedesktop.org's specifications call
// shared MIME-info, desktop entries, icon themes and MIME applications.
#pragma once

#include "platform/linux/userfiles.h"

#include <QString>
#include <string>
#include <vector>

namespace wb
{

class clsRegistryObject;

// A file type that the registry's classes tell of.
struct RegisteredType {
    QByteArray Extension; // of a type that this layer knows, in lower case
    QString Description;
    int Icon = 0;        // of the program's icons
    std::string Program; // its native path
};

std::vector<RegisteredType> RegisteredTypes(const clsRegistryObject &registry);

// Makes the desktop open the files of these types by their programs, and no others of the types that this
// layer knows. Nothing that is as it should be is written, and no program runs then. What other programs
// registered stays.
void BringDesktopInLine(const std::vector<RegisteredType> &types, const XdgFolders &folders);

} // namespace wb
