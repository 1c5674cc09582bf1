// What the HAI editor page works on: two lists of indexed frames. The first is the animation that is opened
// and saved, the second one a store from which frames are taken.
#pragma once

#include "anim/framejob.h"
#include "anim/framelist.h"

#include <QStringList>

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

namespace wb
{

class HaiProject
{
public:
    enum ListName { Animation, Store };

    const FrameList &List(ListName list) const { return m_lists[list]; }
    const QString &FileName() const { return m_fileName; } // of the HAI last opened or saved, without folder
    bool IsBusy() const { return m_job.IsBusy(); }

    // Ends the job that runs: what was added stays, Open leaves nothing, Save writes nothing.
    void Stop() { m_job.Stop(); }

    // The animation has frames, and something has changed in it since they were opened or saved.
    bool HasUnsavedWork() const { return m_lists[Animation].HasUnsavedWork(); }

    // The current frame as a 32-bit picture; empty without frames.
    FrameBuf Shown(ListName list) const;

    // --- Files
    //
    // While one of these, AddFrames, AddFiles or CopyAll calls its step the project is busy, and whatever
    // else would change it does nothing.

    // Empties both lists, or one; the animation's file name becomes empty with it.
    void Clean();
    void Clean(ListName list);

    // Replaces the animation, by nothing when the file holds no frames. Gives the number of frames that
    // memory did not suffice for; nothing, with all as it was, when the file can't be read. Stopped, it
    // leaves no frames and no name, so that no part of a file is saved in its place.
    std::optional<std::int32_t> Open(const QString &path, const FrameStep &step);

    // The frames of the animation that are not 128 x 128, as an opened one may have: a file holds their top
    // left corner, or has nothing beside them.
    std::int32_t OtherSized() const;

    // The name is taken over whatever the end.
    SaveEnd Save(const QString &path, const FrameStep &step);

    // --- Frames
    //
    // What is added is brought to 128 x 128 pixels and 256 colours; an indexed frame stays as it is. False
    // when there is no picture.

    bool AddFrame(ListName list, FrameBuf frame, const QString &name);
    void AddFrames(ListName list, std::vector<FrameBuf> frames, const QStringList &names,
                   const FrameStep &step);

    // Adds PNG files under their names. False when a file that is there is none.
    bool AddFiles(ListName list, const QStringList &paths, const FrameStep &step);

    // Add the selected frame, or all, to the other list.
    void CopySelected(ListName from);
    void CopyAll(ListName from, const FrameStep &step);

    void Select(ListName list, std::int32_t line) { m_lists[list].Select(line); }
    void SetCurrent(ListName list, std::int32_t frame) { m_lists[list].SetCurrent(frame); }
    void RemoveSelected(ListName list);
    void MoveSelected(std::int32_t distance); // in the animation

private:
    bool Append(ListName list, FrameBuf frame, const QString &name);
    void CopyFrame(ListName from, std::int32_t frame); // to the other list

    std::array<FrameList, 2> m_lists;
    QString m_fileName;
    FrameJob m_job;
};

} // namespace wb
