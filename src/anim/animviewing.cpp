#include "anim/animviewing.h"

#include "services/uitext.h"

namespace wb
{

namespace
{

void ShowProgress(void (Progress::*show)(std::int32_t, const QString &), const AnimViewing &viewing,
                  std::int32_t value, std::int32_t framesRead, std::int32_t count)
{
    if (viewing.Bar != nullptr && count > 1)
        (viewing.Bar->*show)(value, UiText(TextReadingFrames) + QString::number(framesRead) +
                                        QStringLiteral(" / ") + QString::number(count));
}

} // namespace

FrameSet ReadFrames(const char *kind, std::int32_t count, const AnimViewing &viewing,
                    const std::function<bool(FrameSet &, std::int32_t)> &readFrame)
{
    FrameSet document;
    if (count == 0)
        return document;
    document.Kind = kind;
    document.Pictures.resize(std::size_t(count));
    ShowProgress(&Progress::ProgressStart, viewing, count - 1, 0, count);
    for (std::int32_t i = 0; i < count; ++i) {
        if (viewing.Abort != nullptr && viewing.Abort->IsSet())
            break;
        if (!readFrame(document, i)) {
            document.LeftOut = count - i;
            break;
        }
        document.Count = i + 1;
        ShowProgress(&Progress::ProgressStep, viewing, i, i + 1, count);
    }
    if (viewing.Abort != nullptr)
        viewing.Abort->Clear();
    if (viewing.Bar != nullptr && count > 1)
        viewing.Bar->ProgressClear();
    return document;
}

} // namespace wb
