// The registry: keys by paths such as "HKEY_CURRENT_USER\Software\x" that hold named values.
//
// On Linux it is a file of this user, and the desktop follows what its classes say: a key "Classes\.ext"
// whose class has a description, an icon and a command makes the desktop open such files by that command.
#pragma once

#include <QJsonObject>
#include <QString>
#include <QThreadPool>

#include <string>

namespace wb
{

enum class RegistryType : int { Text = 1, Number = 4, Lines = 7 };

class clsRegistryObject
{
public:
    // One that lasts no longer than the object and that no desktop follows.
    clsRegistryObject() = default;
    // The one kept in the native path `file`; empty when there is none, or none that can be read. An empty
    // path is that of one kept nowhere.
    explicit clsRegistryObject(std::string file);

    // A path's first part is the name of a root: HKEY_CLASSES_ROOT, HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE or
    // HKEY_USERS; a backslash at its end does not count, nor does case. An empty value name is the key's
    // default value. A number is given in decimal, lines are parted by CR LF.

    // Makes the key when it is missing. False for a path without such a root.
    bool SetValue(const QString &keyPath, const QString &name, const QString &value,
                  RegistryType type = RegistryType::Text);
    // Removes the key and all below it. False when it is not there.
    bool DeleteKey(const QString &keyPath);
    // The value as it was set; empty when it is not there.
    QString Value(const QString &keyPath, const QString &name = {}) const;

    // Keeps what was changed, and brings the desktop in line. What can't be written is left as it is: nobody
    // is told. Returns at once: the desktop follows on a thread of its own, for which the destructor waits.
    void Publish();

private:
    QString StoredKey(const QString &keyPath) const;

    std::string m_file;
    QJsonObject m_keys; // by paths: objects of values by names, each [type, value]
    bool m_isChanged = false;
    QThreadPool m_follower;
};

// Where this user's registry is kept (XDG Base Directory Specification: below $XDG_DATA_HOME, else
// ~/.local/share). Empty for a user without a home.
std::string RegistryFile();

} // namespace wb
