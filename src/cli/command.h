// One command of the command line companion.
#pragma once

#include <QCommandLineParser>
#include <QJsonDocument>
#include <QString>

#include <span>

namespace wb::cli
{

enum ExitStatus : int { Done = 0, Failed = 1, WrongUsage = 2 };

struct Command {
    const char *name;
    const char *summary;
    void (*declare)(QCommandLineParser &parser); // its options and arguments
    int fewestArguments;
    int mostArguments;
    int (*run)(const QCommandLineParser &parser);
};

extern const Command InfoCommand;
extern const Command ListCommand;
extern const Command UnpackCommand;
extern const Command ExtractCommand;
extern const Command PackCommand;
extern const Command ExportCommand;
extern const Command GiCommand;
extern const Command GaiCommand;
extern const Command HaiCommand;
extern const Command AnimateCommand;
extern const Command DatCommand;

// One line on standard error, and the status of a failed command. A control character shows as "?", and what
// is very long is shortened in its middle.
int Fail(const QString &path, const QString &reason);
// The same for a command that was not called as it should be.
int Misuse(const QString &reason);

void Print(const QString &text);
// One line that stays one: a control character in it, as a hostile file name may have, shows as "?".
void PrintLine(const QString &text);

// The option by which a command prints one JSON document instead of text.
void DeclareJson(QCommandLineParser &parser);
bool WantsJson(const QCommandLineParser &parser);
void PrintJson(const QJsonDocument &document);

// The program's path of a file named on the command line.
QString FromArgument(const QString &argument);

// A file of this name in the folder of another one, as the user would name it.
QString Beside(const QString &argument, const QString &name);

// Whether the last part of what the user named can be that of a file to write; says so when not.
bool NamesFile(const QString &argument);

// The option by which a command may replace files, and whether it may write `argument`; says so when not.
void DeclareForce(QCommandLineParser &parser);
bool MayWrite(const QCommandLineParser &parser, const QString &argument);

// The option by which progress is hidden.
void DeclareQuiet(QCommandLineParser &parser);
bool IsQuiet(const QCommandLineParser &parser);

// Reads "N" with N in the range; false for any other text.
bool ReadNumber(const QString &text, int lowest, int highest, int &number);
// The same for "N,N" with as many as `numbers` has room for.
bool ReadNumbers(const QString &text, int lowest, int highest, std::span<int> numbers);

} // namespace wb::cli
