// The machine's drives.
#pragma once

#include <QString>
#include <memory>
#include <string>
#include <vector>

namespace wb
{

enum DriveType : int { DriveRemovable = 2, DriveFixed = 3, DriveNetwork = 4, DriveOptical = 5, DriveRam = 6 };

struct Drive {
    char Letter = 0; // 'A' to 'Z'
    int Type = DriveFixed;
    QString Label;          // volume label; empty when there is none
    std::string MountPoint; // native; "/" or without a "/" at its end
};

using DriveTable = std::vector<Drive>;

// Reads the table anew: the drives in letter order. C: is always there, and a drive keeps its letter
// while the program runs, also when it goes and comes back.
DriveTable ListDrives();

// The table as it was read last, for translating paths.
std::shared_ptr<const DriveTable> KnownDrives();

} // namespace wb
