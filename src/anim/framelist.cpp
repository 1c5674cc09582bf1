#include "anim/framelist.h"

#include <algorithm>

namespace wb
{

const FrameBuf *FrameList::CurrentFrame() const
{
    return IsEmpty() ? nullptr : &m_frames[std::size_t(m_current)];
}

FrameBuf *FrameList::CurrentFrame()
{
    return IsEmpty() ? nullptr : &m_frames[std::size_t(m_current)];
}

void FrameList::Select(std::int32_t line)
{
    if (line >= 0 && line < Count())
        m_selected = m_current = line;
}

void FrameList::SetCurrent(std::int32_t frame)
{
    if (frame >= 0 && frame < Count())
        m_current = frame;
}

void FrameList::Add(FrameBuf frame, const QString &name)
{
    m_frames.push_back(std::move(frame));
    m_names.push_back(name);
    m_isModified = true;
    if (Count() == 1)
        Select(0);
}

bool FrameList::RemoveSelected()
{
    if (m_selected < 0)
        return false;
    m_frames.erase(m_frames.begin() + m_selected);
    m_names.removeAt(m_selected);
    m_selected = std::min(m_selected, Count() - 1);
    m_current = std::max(m_selected, 0);
    return m_isModified = true;
}

bool FrameList::MoveSelected(std::int32_t distance)
{
    const std::int32_t other = m_selected + distance;
    if (m_selected < 0 || other < 0 || other >= Count())
        return false;
    std::swap(m_frames[std::size_t(m_selected)], m_frames[std::size_t(other)]);
    m_names.swapItemsAt(m_selected, other);
    Select(other);
    return m_isModified = true;
}

void FrameList::Clear()
{
    *this = FrameList();
}

} // namespace wb
