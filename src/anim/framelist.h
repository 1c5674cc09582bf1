// The frames of an animation that is being edited, in playing order. Each has a name; one line is selected,
// and one frame, often another, is the current one, which is shown.
#pragma once

#include "gfx/framebuf.h"

#include <QStringList>

#include <cstdint>
#include <span>
#include <vector>

namespace wb
{

class FrameList
{
public:
    bool IsEmpty() const { return m_frames.empty(); }
    std::int32_t Count() const { return std::int32_t(m_frames.size()); }
    std::span<const FrameBuf> Frames() const { return m_frames; }
    std::span<FrameBuf> Frames() { return m_frames; }
    const QStringList &Names() const { return m_names; }

    std::int32_t Selected() const { return m_selected; } // -1: nothing
    std::int32_t Current() const { return m_current; }   // 0 also without frames

    // The current frame; null without frames.
    const FrameBuf *CurrentFrame() const;
    FrameBuf *CurrentFrame();

    // Selects a line, whose frame becomes the current one; makes another frame current and leaves the
    // selection. Nothing happens when there is no such frame.
    void Select(std::int32_t line);
    void SetCurrent(std::int32_t frame);

    // The first frame of all is selected; others leave the selection.
    void Add(FrameBuf frame, const QString &name);

    // What remains at the selected line, or above it at the end, is selected then. False when nothing was
    // selected.
    bool RemoveSelected();

    // Swaps the selected frame with the one `distance` (-1 or 1) from it, and the selection goes with it.
    // False when there is none.
    bool MoveSelected(std::int32_t distance);

    void Clear();

    // There are frames, and something has changed since they were opened or saved. Adding, removing and
    // moving are seen here; whoever changes a frame, or opens or saves them, says so.
    bool HasUnsavedWork() const { return m_isModified && !IsEmpty(); }
    void SetModified(bool isModified) { m_isModified = isModified; }

private:
    std::vector<FrameBuf> m_frames;
    QStringList m_names; // of the frames
    std::int32_t m_selected = -1;
    std::int32_t m_current = 0;
    bool m_isModified = false;
};

} // namespace wb
