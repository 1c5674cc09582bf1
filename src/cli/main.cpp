// workbench-cli: everything the workbench can do without a window.
#include "cli/command.h"
#include "gfx/graphicslibrary.h"
#include "platform/nativepath.h"
#include "platform/terminal.h"
#include "sound/soundlibrary.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstdio>
#include <new>

namespace wb::cli
{

namespace
{

const Command *const Commands[] = {&InfoCommand, &ListCommand,    &UnpackCommand, &ExtractCommand,
                                   &PackCommand, &ExportCommand,  &GiCommand,     &GaiCommand,
                                   &HaiCommand,  &AnimateCommand, &DatCommand};

QString Overview()
{
    QString text = QStringLiteral("Usage: workbench-cli COMMAND [OPTIONS] ARGUMENTS\n\nCommands:\n");
    for (const Command *command : Commands)
        text += QStringLiteral("  %1 %2\n")
                    .arg(QLatin1String(command->name), -8)
                    .arg(QLatin1String(command->summary));
    return text + QStringLiteral("\nworkbench-cli COMMAND --help tells more; --version tells the version.\n");
}

// Only once the call is known to be right does a command need the library.
int RunLoaded(const Command &command, const QCommandLineParser &parser)
{
    if (!LoadGraphicsLibrary(QCoreApplication::applicationDirPath()))
        return Fail(QLatin1String(GraphicsLibraryFile), QStringLiteral("not found"));
    const int status = command.run(parser);
    UnloadGraphicsLibrary();
    UnloadSoundLibrary();
    return status;
}

// The parser's own help lacks the command and names the program by the path that started it.
QString HelpOf(const Command &command, const QCommandLineParser &parser)
{
    const QString usage = QStringLiteral("Usage: ");
    return parser.helpText().replace(usage + QCoreApplication::arguments().front(),
                                     usage + QStringLiteral("workbench-cli ") + QLatin1String(command.name));
}

// The first argument is the command's name, which the parser passes over as that of a program.
int RunCommand(const Command &command, const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QLatin1String(command.summary));
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                  QStringLiteral("Show this help."));
    parser.addOption(help);
    DeclareQuiet(parser);
    command.declare(parser);
    if (!parser.parse(arguments))
        return Misuse(parser.errorText());
    if (parser.isSet(help)) {
        Print(HelpOf(command, parser));
        return Done;
    }
    const qsizetype count = parser.positionalArguments().size();
    if (count < command.fewestArguments || count > command.mostArguments)
        return Misuse(QStringLiteral("%1 does not take %2 argument(s); see --help")
                          .arg(QLatin1String(command.name))
                          .arg(count));
    try {
        return RunLoaded(command, parser);
    } catch (const std::bad_alloc &) {
        return Fail(QLatin1String(command.name), QStringLiteral("there is not enough memory"));
    }
}

int Main(const QStringList &arguments)
{
    if (arguments.isEmpty())
        return Misuse(QStringLiteral("a command is missing; see --help"));
    const QString &first = arguments.front();
    if (first == QStringLiteral("--help") || first == QStringLiteral("-h")) {
        Print(Overview());
        return Done;
    }
    if (first == QStringLiteral("--version")) {
        Print(QStringLiteral("workbench-cli %1\n").arg(QStringLiteral(WORKBENCH_VERSION)));
        return Done;
    }
    const auto command = std::ranges::find_if(
        Commands, [&](const Command *candidate) { return first == QLatin1String(candidate->name); });
    if (command == std::end(Commands))
        return Misuse(QStringLiteral("no such command: %1; see --help").arg(first));
    return RunCommand(**command, arguments);
}

// A full disk may show itself only when the last of the output is written.
int Finish(int status)
{
    const bool isWritten = std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
    return isWritten ? status : Fail(QStringLiteral("standard output"), QStringLiteral("can't be written"));
}

} // namespace

} // namespace wb::cli

int main(int argc, char **argv)
{
    wb::ReserveStandardStreams();
    const QCoreApplication application(argc, argv);
    QStringList arguments; // Qt's own have lost what is no UTF-8
    for (int i = 1; i < argc; ++i)
        arguments << wb::FromNativeText(argv[i]);
    return wb::cli::Finish(wb::cli::Main(arguments));
}
