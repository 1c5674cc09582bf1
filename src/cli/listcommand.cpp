#include "cli/archiveargument.h"
#include "cli/command.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace wb::cli
{

namespace
{

void Declare(QCommandLineParser &parser)
{
    parser.addOption({QStringLiteral("recursive"), QStringLiteral("List the whole tree below the folder.")});
    DeclareJson(parser);
    parser.addPositionalArgument(QStringLiteral("ARCHIVE"), QStringLiteral("The PKG archive."));
    parser.addPositionalArgument(QStringLiteral("FOLDER"),
                                 QStringLiteral("A folder in it (default: the root)."),
                                 QStringLiteral("[FOLDER]"));
}

QString TypeName(std::int32_t type)
{
    return type == PkgFolder   ? QStringLiteral("folder")
           : type == PkgStored ? QStringLiteral("stored")
                               : QStringLiteral("packed");
}

// Adds the folder whose directory lies at `position`; in the recursive form what a folder holds follows it.
void AddFolder(PkgEntryList &list, PkgWalk &walk, std::int32_t position, const QString &folder,
               bool recursive)
{
    for (const PkgEntry &entry : PkgListFolder(walk.Enter(position, folder), folder)) {
        list.push_back(entry);
        if (recursive && entry.Type == PkgFolder)
            AddFolder(list, walk, entry.Offset, entry.FullPath() + u'\\', recursive);
    }
}

QJsonObject AsObject(const PkgEntry &entry)
{
    return {{QStringLiteral("name"), entry.Name},
            {QStringLiteral("path"), entry.FullPath()},
            {QStringLiteral("type"), TypeName(entry.Type)},
            {QStringLiteral("size"), entry.Size},
            {QStringLiteral("packed_size"), entry.PackedSize},
            {QStringLiteral("offset"), entry.Offset}};
}

void PrintList(const PkgEntryList &list, bool asJson)
{
    QJsonArray objects;
    for (const PkgEntry &entry : list)
        if (asJson)
            objects.append(AsObject(entry));
        else
            PrintLine(QStringLiteral("%1 %2 %3 %4")
                          .arg(TypeName(entry.Type))
                          .arg(entry.Size, 10)
                          .arg(entry.PackedSize, 10)
                          .arg(entry.FullPath()));
    if (asJson)
        PrintJson(QJsonDocument(objects));
}

int Run(const QCommandLineParser &parser)
{
    const QStringList arguments = parser.positionalArguments();
    const PkgHandle archive = OpenArchive(arguments[0]);
    if (archive == nullptr)
        return Failed;
    const std::optional<PkgEntry> folder = FindFolder(arguments[0], *archive, arguments.value(1));
    if (!folder)
        return Failed;
    const QString path = folder->FullPath();
    PkgEntryList list;
    PkgWalk walk(*archive);
    AddFolder(list, walk, folder->Offset, path.isEmpty() ? path : path + u'\\',
              parser.isSet(QStringLiteral("recursive")));
    PrintList(list, WantsJson(parser));
    return Done;
}

} // namespace

const Command ListCommand{"list", "List a folder of an archive.", Declare, 1, 2, Run};

} // namespace wb::cli
