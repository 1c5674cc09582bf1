#include "cli/command.h"
#include "common/files.h"
#include "gfx/graphicslibrary.h"
#include "gi/giformat.h"
#include "viewer/documentloader.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace wb::cli
{

namespace
{

QJsonObject FrameObject(const FrameSet &document, std::size_t frame)
{
    const std::int32_t handle = document.Pictures[frame];
    QJsonObject object{{QStringLiteral("width"), Graphics().VTGF_DIB_GetWidth(handle)},
                       {QStringLiteral("height"), Graphics().VTGF_DIB_GetHeight(handle)},
                       {QStringLiteral("bpp"), Graphics().VTGF_DIB_GetBPP(handle)}};
    if (frame < document.FrameTypes.size())
        object.insert(QStringLiteral("type"), document.FrameTypes[frame]);
    return object;
}

// What only a GI's header tells.
void AddBounds(QJsonObject &object, ByteView bytes)
{
    const std::optional<GiHeader> header = ReadGiHeader(bytes, 0);
    if (!header)
        return;
    object.insert(QStringLiteral("left"), header->Bounds.Left);
    object.insert(QStringLiteral("top"), header->Bounds.Top);
    object.insert(QStringLiteral("right"), header->Bounds.Right);
    object.insert(QStringLiteral("bottom"), header->Bounds.Bottom);
}

QJsonObject Describe(const FrameSet &document, ByteView bytes)
{
    QJsonArray frames;
    for (std::size_t i = 0; i < document.Pictures.size(); ++i)
        frames.append(FrameObject(document, i));
    QJsonObject object{{QStringLiteral("kind"), QString::fromStdString(document.Kind)},
                       {QStringLiteral("count"), document.Count},
                       {QStringLiteral("info"), QString::fromStdString(document.InfoText)},
                       {QStringLiteral("frames"), frames}};
    AddBounds(object, bytes);
    return object;
}

QString AsText(const QJsonObject &object)
{
    const auto number = [](const QJsonObject &holder, const char *key) {
        return QString::number(holder.value(QLatin1String(key)).toInt());
    };
    QString text = QStringLiteral("%1, frames: %2\n")
                       .arg(object.value(QStringLiteral("kind")).toString(), number(object, "count"));
    if (object.contains(QStringLiteral("left")))
        text += QStringLiteral("at %1,%2 to %3,%4\n")
                    .arg(number(object, "left"), number(object, "top"), number(object, "right"),
                         number(object, "bottom"));
    const QJsonArray frames = object.value(QStringLiteral("frames")).toArray();
    for (qsizetype i = 0; i < frames.size(); ++i) {
        const QJsonObject frame = frames[i].toObject();
        text += QStringLiteral("frame %1: %2 x %3, %4 bits per pixel")
                    .arg(QString::number(i), number(frame, "width"), number(frame, "height"),
                         number(frame, "bpp"));
        if (frame.contains(QStringLiteral("type")))
            text += QStringLiteral(", type %1").arg(number(frame, "type"));
        text += u'\n';
    }
    return text;
}

void Declare(QCommandLineParser &parser)
{
    parser.addOption({QStringLiteral("json"), QStringLiteral("Print one JSON document.")});
    parser.addPositionalArgument(QStringLiteral("FILE"), QStringLiteral("The file to look at."));
}

int Run(const QCommandLineParser &parser)
{
    const QString argument = parser.positionalArguments().front();
    ByteArray bytes;
    if (ReadFileBytes(FromArgument(argument), bytes) == 0)
        return Fail(argument, QStringLiteral("can't be read or is empty"));
    const FrameSet document = OpenDocumentBuffer(bytes);
    if (document.Count == 0)
        return Fail(argument, QStringLiteral("is of no kind that can be read"));
    const QJsonObject description = Describe(document, bytes);
    Print(parser.isSet(QStringLiteral("json"))
              ? QString::fromUtf8(QJsonDocument(description).toJson(QJsonDocument::Compact)) + u'\n'
              : AsText(description));
    return Done;
}

} // namespace

const Command InfoCommand{"info", "Tell what a file is.", Declare, 1, Run};

} // namespace wb::cli
