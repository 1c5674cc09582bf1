#include "cli/command.h"
#include "cli/pictureargument.h"
#include "common/files.h"
#include "gi/giencoder.h"
#include "gi/picturefile.h"

#include <array>

namespace wb::cli
{

namespace
{

void Declare(QCommandLineParser &parser)
{
    parser.addOption({QStringLiteral("type"), QStringLiteral("GI type, 0 to 4; it has to be given."),
                      QStringLiteral("T")});
    parser.addOption({QStringLiteral("at"), QStringLiteral("Place on the canvas (default: 0,0)."),
                      QStringLiteral("X,Y"), QStringLiteral("0,0")});
    parser.addOption({QStringLiteral("crop"), QStringLiteral("Cut each layer to its visible pixels.")});
    DeclareForce(parser);
    parser.addPositionalArgument(QStringLiteral("PNG"), QStringLiteral("The picture."));
    parser.addPositionalArgument(QStringLiteral("OUT.gi"), QStringLiteral("The file to write."));
}

int Run(const QCommandLineParser &parser)
{
    const QString source = parser.positionalArguments()[0];
    const QString target = parser.positionalArguments()[1];
    int type = 0;
    std::array<int, 2> place{};
    if (!ReadNumber(parser.value(QStringLiteral("type")), 0, LastGiType, type))
        return Misuse(QStringLiteral("--type takes a number from 0 to 4"));
    if (!ReadNumbers(parser.value(QStringLiteral("at")), 0, LargestPlace, place))
        return Misuse(QStringLiteral("--at takes two numbers from 0 to 99999, as in 10,20"));
    if (!MayWrite(parser, target))
        return Failed;

    FrameBuf picture = ReadPng(FromArgument(source));
    if (picture.Pixels.empty())
        return Fail(source, QStringLiteral("is no PNG that can be read"));
    if (const QString problem = TypeProblem(picture, type); !problem.isEmpty())
        return Fail(source, problem);
    picture.X = place[0];
    picture.Y = place[1];
    ByteArray bytes;
    if (EncodeGi(bytes, picture, type, picture.TransType, parser.isSet(QStringLiteral("crop"))) == 0)
        return Fail(source, QStringLiteral("can't be coded as type %1").arg(type));
    if (!WriteFileBytes(FromArgument(target), bytes))
        return Fail(target, QStringLiteral("can't be written"));
    return Done;
}

} // namespace

const Command GiCommand{"gi", "Turn a PNG into a GI.", Declare, 2, 2, Run};

} // namespace wb::cli
