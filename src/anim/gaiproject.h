// What the GAI editor page works on: frames, the box they lie in, and how they are written.
#pragma once

#include "anim/framejob.h"
#include "anim/framelist.h"
#include "anim/gaiwriter.h"

#include <QStringList>

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

namespace wb
{

class GaiProject
{
public:
    // The numbers that can be chosen: of the box, and from X on of the current frame.
    enum Field { StartX, StartY, Width, Height, X, Y, Delay };
    static constexpr int FieldCount = 7;
    static constexpr std::int32_t MaxValue = 99999;

    const FrameList &List() const { return m_list; }
    const GaiBox &Box() const { return m_box; }
    const QString &FileName() const { return m_fileName; } // of the GAI last opened or saved, without folder
    bool IsBusy() const { return m_job.IsBusy(); }

    // Ends the job that runs: what was added stays, Open leaves nothing, Save writes nothing.
    void Stop() { m_job.Stop(); }

    // There are frames, and something has changed since they were opened or saved.
    bool HasUnsavedWork() const { return m_list.HasUnsavedWork(); }

    // --- Files
    //
    // While one of these, or of those that add frames, calls its step the project is busy, and whatever else
    // would change it does nothing.

    // Takes everything but the name and the options back to what it was at the start.
    void Clean();

    // Replaces all by the animation; by nothing when the file is no GAI. Every frame can be saved again: as
    // the type it has, also an opaque one of the types 1 to 4, or, of a type above 4, as the one that its
    // transparency gives an added picture. Gives the number of frames that
    // memory did not suffice for; nothing, with all as it was, when the file can't be read. Stopped, it
    // leaves no frames and no name, so that no part of a file is saved in its place.
    std::optional<std::int32_t> Open(const QString &path, const FrameStep &step);

    // The name is taken over whatever the end.
    SaveEnd Save(const QString &path, const FrameStep &step);

    GaiErrors Check() const { return CheckGaiProject(m_box, m_list.Frames()); }

    const GaiWriting &Options() const { return m_options; }
    void SetOptions(const GaiWriting &options);

    // --- Frames
    //
    // A frame that is added gets a type by its transparency, and the delay shown. The first one gives the box
    // its size. Where there is no picture nothing is added.

    // At the start of the box.
    void AddPictures(std::vector<FrameBuf> pictures, const QStringList &names, const FrameStep &step);

    // Where they lie. False when it was stopped.
    bool AddGis(std::vector<FrameBuf> pictures, const QStringList &names, const FrameStep &step);

    // Adds PNG and GI files under their names, the ones as pictures, the others as GIs. False when a file
    // that is there is neither.
    bool AddFiles(const QStringList &paths, const FrameStep &step);

    void Select(std::int32_t line) { m_list.Select(line); }
    void SetCurrent(std::int32_t frame) { m_list.SetCurrent(frame); }
    void RemoveSelected();
    void MoveSelected(std::int32_t distance);

    // --- Numbers
    //
    // Without frames those of a frame are what the next one is shown with, and nothing changes them. Only an
    // opened animation has negative ones.

    std::int32_t Value(Field field) const;

    // What is beyond 0 and MaxValue is brought inside; a negative number may become any down to -MaxValue.
    void SetValue(Field field, std::int64_t value);

    // Add or subtract 1, unless the number has reached the end of its range.
    void StepUp(Field field);
    void StepDown(Field field);

    // Gives the current frame's number to every frame.
    void CopyToAll(Field field);

    // --- Types

    // The current frame's; -1 without frames.
    std::int32_t GiType() const;

    // Whether the current frame can be written as this type.
    bool CanChooseType(std::int32_t type) const;

    // Nothing changes when the frame can't be written so.
    void SetGiType(std::int32_t type);

    // Gives the current frame's type to every frame that can be written so.
    void CopyTypeToAll();

private:
    void Empty();
    void Change(Field field, std::int32_t value);
    bool Append(FrameBuf frame, const QString &name);
    FrameBuf AtStart(FrameBuf picture) const;

    static constexpr GaiBox NoBox = {0, 0, 300, 300};
    static constexpr std::array<std::int32_t, 3> NoFrame = {0, 0, 50};

    QString m_fileName;
    FrameList m_list;
    GaiBox m_box = NoBox;
    GaiWriting m_options;
    std::array<std::int32_t, 3> m_lastFrame = NoFrame; // X, Y and delay of the last frame there was
    FrameJob m_job;
};

} // namespace wb
