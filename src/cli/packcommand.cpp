#include "archive/packjob.h"
#include "cli/command.h"
#include "cli/joboutput.h"
#include "common/files.h"
#include "platform/folderscan.h"
#include "platform/nativepath.h"

namespace wb::cli
{

namespace
{

void Declare(QCommandLineParser &parser)
{
    parser.addOption({QStringLiteral("store"), QStringLiteral("Compress nothing.")});
    DeclareForce(parser);
    parser.addPositionalArgument(QStringLiteral("FOLDER"), QStringLiteral("The folder to pack."));
    parser.addPositionalArgument(QStringLiteral("ARCHIVE"), QStringLiteral("The PKG archive to write."));
}

int Run(const QCommandLineParser &parser)
{
    const QString source = parser.positionalArguments()[0];
    const QString target = parser.positionalArguments()[1];
    if (!MayWrite(parser, target))
        return Failed;
    PackOrder order;
    order.Folder = FromArgument(source);
    order.ArchivePath = FromArgument(target);
    order.StoreOnly = parser.isSet(QStringLiteral("store"));
    if (!FolderExists(order.Folder))
        return Fail(source, QStringLiteral("is no folder"));
    std::vector<FolderEntry> inside;
    if (ScanFolder(ToNativePath(order.Folder), inside) != FileError::None)
        return Fail(source, QStringLiteral("can't be listed"));
    JobOutput output(parser, target);
    return output.Status(PackJob(output.Bar()).Run(order, output.Report()));
}

} // namespace

const Command PackCommand{"pack", "Pack a folder into an archive.", Declare, 2, 2, Run};

} // namespace wb::cli
