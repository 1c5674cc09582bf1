#include "archive/unpackjob.h"
#include "cli/archiveargument.h"
#include "cli/command.h"
#include "cli/joboutput.h"

namespace wb::cli
{

namespace
{

void Declare(QCommandLineParser &parser)
{
    parser.addOption({QStringLiteral("folder"),
                      QStringLiteral("Unpack only what lies in this folder of the archive."),
                      QStringLiteral("INSIDE")});
    parser.addPositionalArgument(QStringLiteral("ARCHIVE"), QStringLiteral("The PKG archive."));
    parser.addPositionalArgument(
        QStringLiteral("TARGET"),
        QStringLiteral("The folder to unpack into; what is there already is replaced."));
}

int Run(const QCommandLineParser &parser)
{
    const QString source = parser.positionalArguments()[0];
    const QString target = parser.positionalArguments()[1];
    const PkgHandle archive = OpenArchive(source);
    if (archive == nullptr)
        return Failed;
    const std::optional<PkgEntry> folder =
        FindFolder(source, *archive, parser.value(QStringLiteral("folder")));
    if (!folder)
        return Failed;
    UnpackOrder order;
    order.TargetFolder = FromArgument(target);
    order.Archive = archive;
    order.StartOffset = folder->Offset;
    JobOutput output(parser, target);
    return output.Status(UnpackJob(output.Bar()).Run(order, output.Report()));
}

} // namespace

const Command UnpackCommand{"unpack", "Unpack an archive into a folder.", Declare, 2, 2, Run};

} // namespace wb::cli
