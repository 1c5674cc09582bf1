#include "viewer/viewertexts.h"

#include "gfx/graphicslibrary.h"
#include "services/uitext.h"

namespace wb
{

namespace
{

const QString Separator = QStringLiteral("  |  ");

bool HasPictures(const FrameSet &document)
{
    return document.Mode == DocumentMode::Pictures && document.Count >= 1;
}

QString SharedLabel(const QString &text)
{
    return QStringLiteral("|  ") + text;
}

const QString EmptyLabel = QStringLiteral("|");

} // namespace

QString StatusText(const FrameSet &document, std::int32_t frame)
{
    if (document.Kind.empty())
        return {};
    QString text = UiText(TextType) + QString::fromStdString(document.Kind);
    if (document.Mode == DocumentMode::Sound)
        text += Separator + UiText(TextFrequency) + QString::fromStdString(document.InfoText) +
                QStringLiteral(" Hz");
    else if (!document.InfoText.empty() && frame >= 0 && std::size_t(frame) < document.FrameTypes.size())
        text += Separator + UiText(TextFrameType) + QString::number(document.FrameTypes[std::size_t(frame)]);
    return text;
}

QString FrameText(const FrameSet &document, std::int32_t frame)
{
    if (!HasPictures(document))
        return EmptyLabel;
    QString text = UiText(TextFrame) + QString::number(frame + 1);
    if (document.Count > 1)
        text += QStringLiteral(" / ") + QString::number(document.Count);
    return SharedLabel(text);
}

QString ZoomText(const FrameSet &document, std::int32_t zoom)
{
    return HasPictures(document) ? SharedLabel(QString::number(zoom) + QLatin1Char('%')) : EmptyLabel;
}

QString SizeText(const FrameSet &document, std::int32_t frame)
{
    if (!HasPictures(document) || frame < 0 || frame >= document.Count)
        return EmptyLabel;
    const std::int32_t handle = document.Pictures[std::size_t(frame)];
    return SharedLabel(QStringLiteral("%1 x %2")
                           .arg(Graphics().VTGF_DIB_GetWidth(handle))
                           .arg(Graphics().VTGF_DIB_GetHeight(handle)));
}

QString ObjectsText(int count)
{
    return QLatin1Char(' ') + UiText(TextObjects) + QString::number(count);
}

QString ObjectsText(int count, std::int64_t fileSize)
{
    constexpr std::int64_t Kilobyte = 1024;
    constexpr std::int64_t Megabyte = Kilobyte * 1024;
    std::int64_t amount = fileSize;
    UiTextIndex unit = TextBytes;
    if (fileSize >= Megabyte) {
        amount = fileSize / Megabyte;
        unit = TextMegabytes;
    } else if (fileSize >= Kilobyte) {
        amount = fileSize / Kilobyte;
        unit = TextKilobytes;
    }
    return ObjectsText(count) + Separator + UiText(TextSize) + QString::number(amount) + QLatin1Char(' ') +
           UiText(unit);
}

} // namespace wb
