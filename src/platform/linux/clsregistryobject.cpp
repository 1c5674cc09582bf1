#include "platform/clsregistryobject.h"

#include "platform/fileio.h"
#include "platform/linux/filetypes.h"
#include "platform/linux/userfiles.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <iterator>

namespace wb
{

namespace
{

constexpr const char *Roots[] = {"HKEY_CLASSES_ROOT", "HKEY_CURRENT_USER", "HKEY_LOCAL_MACHINE",
                                 "HKEY_USERS"};

bool HasRoot(const QString &keyPath)
{
    return std::any_of(std::begin(Roots), std::end(Roots), [&keyPath](const char *root) {
        return keyPath.startsWith(QLatin1String(root) + QLatin1Char('\\'), Qt::CaseInsensitive);
    });
}

} // namespace

std::string RegistryFile()
{
    const std::string folder = UserFolders().Data;
    return folder.empty() ? "" : folder + "/workbench/registry.json";
}

clsRegistryObject::clsRegistryObject(std::string file) : m_file(std::move(file))
{
    QByteArray bytes;
    if (ReadUserFile(m_file, bytes))
        m_keys = QJsonDocument::fromJson(bytes).object();
    m_follower.setMaxThreadCount(1); // one step after the other
}

// The path that the store has for the key, else the one to store it by.
QString clsRegistryObject::StoredKey(const QString &keyPath) const
{
    QString path = keyPath.endsWith(u'\\') ? keyPath.chopped(1) : keyPath;
    for (auto key = m_keys.begin(); key != m_keys.end(); ++key)
        if (key.key().compare(path, Qt::CaseInsensitive) == 0)
            return key.key();
    return path;
}

bool clsRegistryObject::SetValue(const QString &keyPath, const QString &name, const QString &value,
                                 RegistryType type)
{
    if (!HasRoot(keyPath))
        return false;
    const QString key = StoredKey(keyPath);
    QJsonObject values = m_keys.value(key).toObject();
    const QJsonArray stored{int(type), value};
    if (values.value(name) == stored)
        return true;
    values.insert(name, stored);
    m_keys.insert(key, values);
    m_isChanged = true;
    return true;
}

bool clsRegistryObject::DeleteKey(const QString &keyPath)
{
    const QString key = StoredKey(keyPath);
    bool isThere = false;
    for (const QString &path : m_keys.keys()) {
        if (path != key && !path.startsWith(key + u'\\', Qt::CaseInsensitive))
            continue;
        m_keys.remove(path);
        isThere = true;
    }
    m_isChanged = m_isChanged || isThere;
    return isThere;
}

QString clsRegistryObject::Value(const QString &keyPath, const QString &name) const
{
    return m_keys.value(StoredKey(keyPath)).toObject().value(name).toArray().at(1).toString();
}

void clsRegistryObject::Publish()
{
    if (m_file.empty())
        return;
    if (m_isChanged)
        m_isChanged = !KeepUserFile(m_file, m_keys.isEmpty() ? QByteArray() : QJsonDocument(m_keys).toJson());
    m_follower.clear(); // only the last state counts
    m_follower.start(
        [types = RegisteredTypes(*this), folders = UserFolders()] { BringDesktopInLine(types, folders); });
}

} // namespace wb
