// The pictures of list rows.
#pragma once

#include <QIcon>

#include <vector>

namespace wb
{

// In the order of the resources: drives of type 2 to 6, folder, folder up, then the kinds of file.
enum class ListIcon {
    DriveT2,
    DriveT3,
    DriveT4,
    DriveT5,
    DriveT6,
    Folder,
    FolderUp,
    Gi,
    Gai,
    Hai,
    Aft,
    Pkg,
    Bmp,
    Jpg,
    Png,
    Psd,
    Dds,
    Wav,
    Txt,
    Null,
    Main,
    Logo,
};

// Decodes one row picture with the graphics library.
QIcon LoadListIcon(ListIcon icon);

// Decodes every row picture with the graphics library, in the order of ListIcon.
std::vector<QIcon> LoadListIcons();

// The pictures of the folder list: drives, folder, folder up, then one for each file pattern.
std::vector<QIcon> FolderListPictures(const std::vector<QIcon> &icons);

} // namespace wb
