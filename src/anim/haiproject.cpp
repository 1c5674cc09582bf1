#include "anim/haiproject.h"

#include "anim/haiformat.h"
#include "anim/haiframe.h"
#include "anim/haireader.h"
#include "anim/haiwriter.h"
#include "common/paths.h"
#include "common/text.h"
#include "gi/picturefile.h"

#include <algorithm>

namespace wb
{

FrameBuf HaiProject::Shown(ListName list) const
{
    const FrameBuf *frame = m_lists[list].CurrentFrame();
    return frame != nullptr ? ExpandIndexed(*frame) : FrameBuf();
}

void HaiProject::Clean()
{
    if (!IsBusy())
        *this = HaiProject();
}

void HaiProject::Clean(ListName list)
{
    if (IsBusy())
        return;
    m_lists[list].Clear();
    if (list == Animation)
        m_fileName.clear();
}

std::optional<std::int32_t> HaiProject::Open(const QString &path, const FrameStep &step)
{
    FrameList &list = m_lists[Animation];
    std::vector<FrameBuf> frames;
    std::int32_t count = 0;
    const OpenEnd end = m_job.Open(path, step, [&](ByteView file, const GoOn &goOn) {
        list.Clear();
        m_fileName.clear();
        count = ReadHaiProject(file, frames, goOn);
    });
    if (end == OpenEnd::Failed)
        return std::nullopt;
    if (end == OpenEnd::Stopped)
        return 0;
    m_fileName = GetFileName(path);
    for (FrameBuf &frame : frames)
        list.Add(std::move(frame), m_fileName + QStringLiteral(" (%1)").arg(ZeroPad(list.Count(), 3)));
    list.SetModified(false);
    return count - list.Count();
}

std::int32_t HaiProject::OtherSized() const
{
    return std::int32_t(std::ranges::count_if(m_lists[Animation].Frames(), [](const FrameBuf &frame) {
        return frame.Width != HaiSide || frame.Height != HaiSide;
    }));
}

SaveEnd HaiProject::Save(const QString &path, const FrameStep &step)
{
    if (IsBusy())
        return SaveEnd::Failed;
    m_fileName = GetFileName(path);
    FrameList &list = m_lists[Animation];
    const SaveEnd end =
        m_job.Save(path, step, [&](const GoOn &goOn) { return WriteHai(list.Frames(), goOn); });
    if (end == SaveEnd::Saved)
        list.SetModified(false);
    return end;
}

bool HaiProject::Append(ListName list, FrameBuf frame, const QString &name)
{
    if (!IsIndexed(frame))
        frame = MakeHaiFrame(std::move(frame));
    const bool isFrame = IsIndexed(frame);
    if (isFrame)
        m_lists[list].Add(std::move(frame), name);
    return isFrame;
}

bool HaiProject::AddFrame(ListName list, FrameBuf frame, const QString &name)
{
    return !IsBusy() && Append(list, std::move(frame), name);
}

void HaiProject::AddFrames(ListName list, std::vector<FrameBuf> frames, const QStringList &names,
                           const FrameStep &step)
{
    m_job.AddFrames(std::move(frames), names, step,
                    [&](FrameBuf frame, const QString &name) { Append(list, std::move(frame), name); });
}

bool HaiProject::AddFiles(ListName list, const QStringList &paths, const FrameStep &step)
{
    return m_job.AddFiles(
        paths, step, [&](const QString &path) { return Append(list, ReadPng(path), GetFileName(path)); });
}

void HaiProject::CopyFrame(ListName from, std::int32_t frame)
{
    const FrameList &source = m_lists[from];
    Append(from == Animation ? Store : Animation, source.Frames()[std::size_t(frame)], source.Names()[frame]);
}

void HaiProject::CopySelected(ListName from)
{
    const std::int32_t selected = m_lists[from].Selected();
    if (!IsBusy() && selected >= 0)
        CopyFrame(from, selected);
}

void HaiProject::CopyAll(ListName from, const FrameStep &step)
{
    if (IsBusy())
        return;
    const std::int32_t count = m_lists[from].Count();
    m_job.Run(step, [&](const GoOn &goOn) {
        for (std::int32_t i = 0; i < count; ++i) {
            CopyFrame(from, i);
            if (!goOn(i + 1, count))
                return;
        }
    });
}

void HaiProject::RemoveSelected(ListName list)
{
    if (!IsBusy())
        m_lists[list].RemoveSelected();
}

void HaiProject::MoveSelected(std::int32_t distance)
{
    if (!IsBusy())
        m_lists[Animation].MoveSelected(distance);
}

} // namespace wb
