// A page of a project: GaiProject, HaiProject or AnimProject. `which` is the name of a list where the project
// has several.
#pragma once

#include "anim/framepage.h"

namespace wb
{

template <typename Project>
class ProjectPage : public FramePage
{
public:
    void Release() override
    {
        m_project.Clean();
        ShowFrames();
    }

protected:
    using FramePage::FramePage;

    void StopJob() override { m_project.Stop(); }
    bool HasUnsavedWork() const override { return m_project.HasUnsavedWork(); }
    QString FileName() const override { return m_project.FileName(); }

    // Lets a list select and remove frames.
    template <typename... ListName>
    void ConnectList(FrameListPane *list, ListName... which)
    {
        connect(list, &FrameListPane::RemoveWanted, this, [this, which...] {
            m_project.RemoveSelected(which...);
            ShowFrames();
        });
        connect(list, &FrameListPane::LineSelected, this, [this, which...](int line) {
            m_project.Select(which..., line);
            ShowFrame();
        });
    }

    // Lets it, and the preview, move frames and move through them.
    template <typename... ListName>
    void ConnectOrder(FrameListPane *list, ListName... which)
    {
        connect(list, &FrameListPane::MoveWanted, this, [this](int distance) {
            m_project.MoveSelected(distance);
            ShowFrames();
        });
        connect(m_preview, &FramePreview::FrameWanted, this, [this, which...](int frame) {
            m_project.SetCurrent(which..., frame);
            ShowFrame();
        });
    }

    // Empties the project, or a list, if its unsaved work may be lost.
    template <typename... ListName>
    void Clean(ListName... which)
    {
        const Command command(*this);
        if (!MayLoseWork())
            return;
        m_project.Clean(which...);
        ShowFrames();
    }

    Project m_project;
};

} // namespace wb
