// What the animation creator page works on: pictures of one size that follow each other, and the frames by
// which each is drawn over the one before.
#pragma once

#include "anim/framejob.h"
#include "anim/framelist.h"

#include <QStringList>

#include <cstdint>
#include <span>
#include <vector>

namespace wb
{

class AnimProject
{
public:
    const FrameList &List() const { return m_list; } // the pictures

    // While AddFrames, AddFiles, Build or WritePngs calls its step the project is busy, and whatever else
    // would change it does nothing.
    bool IsBusy() const { return m_job.IsBusy(); }

    // Ends the job that runs: pictures added and files written stay, frames built do not.
    void Stop() { m_job.Stop(); }

    // The size of the first picture, which all others have; 0 without pictures.
    std::int32_t MainWidth() const;
    std::int32_t MainHeight() const;

    // There are pictures to build frames of, more than one, and something has changed since the frames were
    // written or handed on.
    bool HasUnsavedWork() const { return m_list.Count() > 1 && m_list.HasUnsavedWork(); }

    // None: the frames have a file each.
    QString FileName() const { return {}; }

    void Clean();

    // --- Pictures. While the frames are shown nothing changes them.

    // False when there is no picture, or one of another size than the first.
    bool AddFrame(FrameBuf picture, const QString &name);
    void AddFrames(std::vector<FrameBuf> pictures, const QStringList &names, const FrameStep &step);

    // Adds PNG files under their names. False when a file that is there is none, or of another size.
    bool AddFiles(const QStringList &paths, const FrameStep &step);

    void Select(std::int32_t line) { m_list.Select(line); }
    void SetCurrent(std::int32_t frame) { m_list.SetCurrent(frame); }
    void RemoveSelected();
    void MoveSelected(std::int32_t distance);

    // --- Frames

    // What drawing the frames one onto another does not give: pixels that changed and are transparent, fully
    // or in part, where the picture before is not empty. What was there shows through them.
    struct Unshown {
        std::int64_t Pixels = 0; // in all frames
        std::int32_t Frames = 0; // that have such pixels
    };

    // Builds a frame for each picture, the first one empty, and shows the frames instead of the pictures.
    // Nothing happens when they are shown already, or when there are fewer than two pictures. `step` hears of
    // all frames but the first.
    void Build(const FrameStep &step);

    // Shows the pictures again.
    void GoBack();

    bool IsGenerated() const { return m_isGenerated; }            // the frames are shown
    std::span<const FrameBuf> Frames() const { return m_frames; } // while they are shown: one a picture
    const Unshown &NotShown() const { return m_notShown; }        // likewise

    // The frame or picture that is shown; null without any.
    const FrameBuf *ShownFrame() const;

    // Tells the frames that are shown from those of other builds.
    std::int32_t BuildNumber() const { return m_buildNumber; }

    // The frames of that build have all been handed on. Nothing happens when they are no longer shown.
    void MarkHandedOn(std::int32_t buildNumber);

    // Writes the frames that are shown, each to its file, going on after one that can't be written.
    SaveEnd WritePngs(const QString &path, const FrameStep &step);

    // The first frame that the last call, or the one that runs, could not write; -1: there is none.
    std::int32_t Unwritten() const { return m_unwritten; }

    // The files that WritePngs would replace.
    QStringList ReplacedPngs(const QString &path) const;

    // The file of a frame: C:\out\fire.png gives C:\out\fire_007.png.
    static QString PngPath(const QString &path, std::int32_t frame);

private:
    bool MayChange() const { return !IsBusy() && !m_isGenerated; }
    bool Append(FrameBuf picture, const QString &name);
    void BuildFrame(std::size_t number);

    FrameList m_list;
    std::vector<FrameBuf> m_frames;
    Unshown m_notShown;
    bool m_isGenerated = false;
    std::int32_t m_buildNumber = 0; // never the same twice
    std::int32_t m_unwritten = -1;
    FrameJob m_job;
};

} // namespace wb
