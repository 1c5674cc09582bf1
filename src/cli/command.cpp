#include "cli/command.h"

#include "common/files.h"
#include "platform/nativepath.h"

#include <QStringList>

#include <algorithm>
#include <cstdio>

namespace wb::cli
{

namespace
{

const QString QuietOption = QStringLiteral("quiet");
const QString JsonOption = QStringLiteral("json");
constexpr qsizetype LongestPart = 1000; // of an error line

QString WithoutControls(QString text)
{
    for (QChar &character : text)
        if (character.category() == QChar::Other_Control)
            character = u'?';
    return text;
}

// What a file brings into an error line may be of any length; its end tells as much as its start.
QString Shortened(const QString &text)
{
    constexpr qsizetype half = LongestPart / 2;
    return WithoutControls(text.size() <= LongestPart ? text : text.first(half) + u'…' + text.last(half));
}

} // namespace

int Fail(const QString &path, const QString &reason)
{
    std::fprintf(stderr, "workbench-cli: %s: %s\n", ToNativeText(Shortened(path)).c_str(),
                 ToNativeText(Shortened(reason)).c_str());
    return Failed;
}

int Misuse(const QString &reason)
{
    std::fprintf(stderr, "workbench-cli: %s\n", ToNativeText(Shortened(reason)).c_str());
    return WrongUsage;
}

void Print(const QString &text)
{
    std::fputs(text.toUtf8().constData(), stdout);
}

void PrintLine(const QString &text)
{
    Print(WithoutControls(text) + u'\n');
}

void DeclareJson(QCommandLineParser &parser)
{
    parser.addOption({JsonOption, QStringLiteral("Print one JSON document.")});
}

bool WantsJson(const QCommandLineParser &parser)
{
    return parser.isSet(JsonOption);
}

void PrintJson(const QJsonDocument &document)
{
    Print(QString::fromUtf8(document.toJson(QJsonDocument::Compact)) + u'\n');
}

QString FromArgument(const QString &argument)
{
    return FromNativePath(ToNativeText(argument));
}

QString Beside(const QString &argument, const QString &name)
{
    return argument.first(argument.lastIndexOf(u'/') + 1) + FromNativeText(ToNativeName(name));
}

void DeclareForce(QCommandLineParser &parser)
{
    parser.addOption({QStringLiteral("force"), QStringLiteral("Replace files that are already there.")});
}

// The program's paths have neither slashes at their ends nor dots: "x.png/" would become the file "x.png".
bool NamesFile(const QString &argument)
{
    const QString name = argument.section(u'/', -1);
    if (!name.isEmpty() && name != QStringLiteral(".") && name != QStringLiteral(".."))
        return true;
    Fail(argument, QStringLiteral("is no name of a file"));
    return false;
}

bool MayWrite(const QCommandLineParser &parser, const QString &argument)
{
    if (!NamesFile(argument))
        return false;
    if (parser.isSet(QStringLiteral("force")) || !FileExists(FromArgument(argument)))
        return true;
    Fail(argument, QStringLiteral("is already there; --force replaces it"));
    return false;
}

void DeclareQuiet(QCommandLineParser &parser)
{
    parser.addOption({QuietOption, QStringLiteral("Show no progress.")});
}

bool IsQuiet(const QCommandLineParser &parser)
{
    return parser.isSet(QuietOption);
}

bool ReadNumber(const QString &text, int lowest, int highest, int &number)
{
    bool numeric = false;
    number = text.toInt(&numeric);
    return numeric && number >= lowest && number <= highest;
}

bool ReadNumbers(const QString &text, int lowest, int highest, std::span<int> numbers)
{
    const QStringList parts = text.split(u',');
    return std::ranges::equal(parts, numbers, [&](const QString &part, int &number) {
        return ReadNumber(part, lowest, highest, number);
    });
}

} // namespace wb::cli
