#include "cli/command.h"
#include "cli/terminalprogress.h"
#include "common/files.h"
#include "dat/datjson.h"
#include "dat/datreader.h"
#include "dat/datwriter.h"

namespace wb::cli
{

namespace
{

const QString CompressedOption = QStringLiteral("zl");
const QString PlainOption = QStringLiteral("plain");

void Declare(QCommandLineParser &parser)
{
    parser.addOption({CompressedOption, QStringLiteral("Import: compress, whatever the JSON says.")});
    parser.addOption({PlainOption, QStringLiteral("Import: do not compress, whatever the JSON says.")});
    DeclareForce(parser);
    parser.addPositionalArgument(QStringLiteral("ACTION"),
                                 QStringLiteral("Export a DAT as JSON, or import JSON as a DAT."),
                                 QStringLiteral("export|import"));
    parser.addPositionalArgument(QStringLiteral("FILE"), QStringLiteral("The file to read."));
    parser.addPositionalArgument(QStringLiteral("OUT"), QStringLiteral("The file to write."));
}

int WriteOut(const QString &target, const ByteArray &bytes)
{
    return WriteFileBytes(FromArgument(target), bytes) ? Done
                                                       : Fail(target, QStringLiteral("can't be written"));
}

int Export(const QString &source, const QString &target, bool isQuiet)
{
    ByteArray bytes;
    if (ReadFileBytes(FromArgument(source), bytes) == 0)
        return Fail(source, QStringLiteral("can't be read or is empty"));
    TerminalProgress bar(isQuiet);
    const DatTree tree = DatParse(std::move(bytes), {.Bar = &bar});
    if (tree.Count() == 0)
        return Fail(source, QStringLiteral("is no DAT that can be read"));
    return WriteOut(target, DatToJson(tree));
}

int Import(const QString &source, const QString &target, const QCommandLineParser &parser)
{
    ByteArray json;
    if (ReadFileBytes(FromArgument(source), json) == 0)
        return Fail(source, QStringLiteral("can't be read or is empty"));
    DatFromJsonResult document = DatFromJson(json);
    if (!document.Problem.isEmpty())
        return Fail(source, document.Problem);
    if (parser.isSet(PlainOption) || (!document.IsZL && !parser.isSet(CompressedOption)))
        return WriteOut(target, document.Plain);
    DatTree tree = DatParse(std::move(document.Plain));
    tree.IsZL = true;
    const ByteArray packed = DatSerialize(tree);
    return packed.empty() ? Fail(source, QStringLiteral("can't be compressed")) : WriteOut(target, packed);
}

int Run(const QCommandLineParser &parser)
{
    const QString what = parser.positionalArguments()[0];
    const QString source = parser.positionalArguments()[1];
    const QString target = parser.positionalArguments()[2];
    const bool isExport = what == QStringLiteral("export");
    if (!isExport && what != QStringLiteral("import"))
        return Misuse(QStringLiteral("dat takes \"export\" or \"import\", not \"%1\"").arg(what));
    if (parser.isSet(CompressedOption) && parser.isSet(PlainOption))
        return Misuse(QStringLiteral("--zl and --plain exclude each other"));
    if (isExport && (parser.isSet(CompressedOption) || parser.isSet(PlainOption)))
        return Misuse(QStringLiteral("--zl and --plain are for dat import"));
    if (!MayWrite(parser, target))
        return Failed;
    return isExport ? Export(source, target, IsQuiet(parser)) : Import(source, target, parser);
}

} // namespace

const Command DatCommand{"dat", "Turn a DAT into JSON and back.", Declare, 3, 3, Run};

} // namespace wb::cli
