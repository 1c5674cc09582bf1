#include "anim/animviewing.h"

#include "gfx/framebuf.h"
#include "platform/memorystatus.h"
#include "services/uitext.h"

#include <algorithm>

namespace wb
{

namespace
{

// One picture of the largest size where the machine does not tell.
std::int64_t HalfOfFreeMemory()
{
    const MemoryStatus memory = QueryMemoryStatus();
    return memory.TotalBytes != 0 ? memory.AvailableBytes / 2 : MaxPicturePixels * 4;
}

void ShowProgress(void (Progress::*show)(std::int32_t, const QString &), const AnimViewing &viewing,
                  std::int32_t value, std::int32_t framesRead, std::int32_t count)
{
    if (viewing.Bar != nullptr && count > 1)
        (viewing.Bar->*show)(value, UiText(TextReadingFrames) + QString::number(framesRead) +
                                        QStringLiteral(" / ") + QString::number(count));
}

} // namespace

MemoryBudget::MemoryBudget(std::int64_t limit) : m_left(limit != 0 ? limit : HalfOfFreeMemory()) {}

void MemoryBudget::LimitTo(std::int64_t bytes)
{
    m_left = std::min(m_left, bytes);
}

bool MemoryBudget::Take(std::int64_t bytes)
{
    const bool holds = Holds(bytes);
    m_left -= holds ? bytes : 0;
    return holds;
}

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
