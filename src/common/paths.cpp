#include "common/paths.h"

namespace wb
{

QString GetFolder(const QString &path)
{
    const QString folder = path.first(qMax<qsizetype>(path.lastIndexOf(u'\\'), 0));
    return folder.size() == 2 && folder[1] == u':' ? folder + u'\\' : folder;
}

QString GetFileName(const QString &path)
{
    return path.sliced(path.lastIndexOf(u'\\') + 1);
}

QString GetFileTitle(const QString &path)
{
    const QString name = GetFileName(path);
    return name.left(name.lastIndexOf(u'.'));
}

QString GetExtension(const QString &path)
{
    const qsizetype dot = path.lastIndexOf(u'.');
    return dot < 0 ? QString() : path.sliced(dot + 1);
}

QString NormalizePath(const QString &path)
{
    QString normal = path;
    return normal.replace(QStringLiteral("\\\\"), QStringLiteral("\\"));
}

QString PathIn(const QString &folder, const QString &name)
{
    return folder.isEmpty() ? name : NormalizePath(folder + u'\\' + name);
}

} // namespace wb
