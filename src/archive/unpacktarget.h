// A folder on disk that an archive's folder is extracted into.
#pragma once

#include "common/bytearray.h"

#include <QHash>
#include <QString>

#include <optional>
#include <string>

namespace wb
{

class UnpackTarget
{
public:
    // Makes the folder, with every one above it that is missing. Nothing when that fails.
    static std::optional<UnpackTarget> Make(const QString &path);

    const QString &Path() const { return m_path; }

    // True when `name` is a link: nothing may be written through it, it could lead anywhere.
    bool IsLinkThere(const QString &name) const;

    // The folder `name` in this one. Nothing when it can't be made.
    std::optional<UnpackTarget> MakeFolder(const QString &name) const;

    // Makes `bytes` the file `name` in this folder, replacing an older one.
    bool WriteFile(const QString &name, ByteView bytes) const;

private:
    static std::optional<UnpackTarget> MakeNative(const QString &path, const std::string &native);
    std::string NativeOf(const QString &name) const;

    QString m_path;
    std::string m_native;
    bool m_isNew = false;            // made by us: nothing but ours is in it
    QHash<QString, QString> m_older; // what was there before, by its upper-case name
};

} // namespace wb
