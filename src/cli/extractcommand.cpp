#include "cli/archiveargument.h"
#include "cli/command.h"
#include "common/files.h"

#include <cstdio>

namespace wb::cli
{

namespace
{

void Declare(QCommandLineParser &parser)
{
    parser.addOption({QStringLiteral("o"),
                      QStringLiteral("The file to write, which has to be given; - is standard output."),
                      QStringLiteral("FILE")});
    DeclareForce(parser);
    parser.addPositionalArgument(QStringLiteral("ARCHIVE"), QStringLiteral("The PKG archive."));
    parser.addPositionalArgument(QStringLiteral("ENTRY"), QStringLiteral("The path of a file in it."));
}

int Write(const QString &target, ByteView bytes)
{
    if (target == QStringLiteral("-"))
        std::fwrite(bytes.data(), 1, bytes.size(), stdout);
    else if (!WriteFileBytes(FromArgument(target), bytes))
        return Fail(target, QStringLiteral("can't be written"));
    return Done;
}

int Run(const QCommandLineParser &parser)
{
    const QString source = parser.positionalArguments()[0];
    const QString path = parser.positionalArguments()[1];
    const QString target = parser.value(QStringLiteral("o"));
    if (target.isEmpty())
        return Misuse(QStringLiteral("extract needs -o FILE; see --help"));
    if (target != QStringLiteral("-") && !MayWrite(parser, target))
        return Failed;
    const PkgHandle archive = OpenArchive(source);
    if (archive == nullptr)
        return Failed;
    const std::optional<PkgEntry> file = FindFile(source, *archive, path);
    if (!file)
        return Failed;
    ByteArray bytes;
    if (!PkgReadEntryData(*archive, bytes, *file))
        return Fail(source, QStringLiteral("the file %1 is damaged").arg(path));
    return Write(target, bytes);
}

} // namespace

const Command ExtractCommand{"extract", "Write one file of an archive.", Declare, 2, 2, Run};

} // namespace wb::cli
