// Files of the program and of the desktop in this user's own folders.
#pragma once

#include <QByteArray>
#include <string>

namespace wb
{

// XDG Base Directory Specification. Native paths, without a separator at their end; empty where nothing tells
// one. Without $HOME, the home is what the system's list of users says.
struct XdgFolders {
    std::string Data;   // $XDG_DATA_HOME, else ~/.local/share
    std::string Config; // $XDG_CONFIG_HOME, else ~/.config
};
XdgFolders UserFolders();

// Replaces `bytes` with the file, or with nothing when it is missing. False for one that can't be read, or is
// too large to be one of these files.
bool ReadUserFile(const std::string &path, QByteArray &bytes);

// Makes `bytes` the file, with the folders above it; no bytes stand for no file. True when the file now is as
// it should be. `changed`, when given, becomes true when it was not so before.
bool KeepUserFile(const std::string &path, const QByteArray &bytes, bool *changed = nullptr);

} // namespace wb
