#include "cli/command.h"
#include "common/files.h"
#include "gfx/graphicslibrary.h"
#include "gfx/pixels.h"
#include "gi/giencoder.h"
#include "gi/giformat.h"
#include "platform/nativepath.h"

#include <QStringList>

namespace wb::cli
{

namespace
{

constexpr int LastType = 4;
constexpr int LargestPlace = 99999;

void Declare(QCommandLineParser &parser)
{
    parser.addOption({QStringLiteral("type"), QStringLiteral("GI type, 0 to 4."), QStringLiteral("T")});
    parser.addOption({QStringLiteral("at"), QStringLiteral("Place on the canvas (default: 0,0)."),
                      QStringLiteral("X,Y"), QStringLiteral("0,0")});
    parser.addOption({QStringLiteral("crop"), QStringLiteral("Cut each layer to its visible pixels.")});
    DeclareForce(parser);
    parser.addPositionalArgument(QStringLiteral("PNG"), QStringLiteral("The picture."));
    parser.addPositionalArgument(QStringLiteral("OUT.gi"), QStringLiteral("The file to write."));
}

bool ReadPlace(const QString &text, FrameBuf &picture)
{
    const QStringList parts = text.split(u',');
    return parts.size() == 2 && ReadNumber(parts[0], 0, LargestPlace, picture.X) &&
           ReadNumber(parts[1], 0, LargestPlace, picture.Y);
}

FrameBuf ReadPng(const QString &argument)
{
    const std::string path = ToNativePath(FromArgument(argument));
    const std::int32_t handle = Graphics().VTGF_Read_PNG_File(path.c_str());
    FrameBuf picture = DibToFrameBuf(handle);
    picture.TransType = Graphics().VTGF_DIB_GetTransType(handle);
    Graphics().VTGF_DIB_Free(handle);
    return picture;
}

int Run(const QCommandLineParser &parser)
{
    const QString source = parser.positionalArguments()[0];
    const QString target = parser.positionalArguments()[1];
    int type = 0;
    FrameBuf place;
    if (!ReadNumber(parser.value(QStringLiteral("type")), 0, LastType, type))
        return Misuse(QStringLiteral("--type takes a number from 0 to 4"));
    if (!ReadPlace(parser.value(QStringLiteral("at")), place))
        return Misuse(QStringLiteral("--at takes two numbers from 0 to 99999, as in 10,20"));
    if (!MayWrite(parser, target))
        return Failed;

    FrameBuf picture = ReadPng(source);
    if (picture.Pixels.empty())
        return Fail(source, QStringLiteral("is no PNG that can be read"));
    if (!GiTypeAllowed(type, picture.TransType))
        return Fail(source, QStringLiteral("its transparency does not allow type %1").arg(type));
    picture.X = place.X;
    picture.Y = place.Y;
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
