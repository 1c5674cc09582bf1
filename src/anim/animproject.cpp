#include "anim/animproject.h"

#include "common/files.h"
#include "common/paths.h"
#include "common/text.h"
#include "gfx/graphicslibrary.h"
#include "gfx/pixels.h"
#include "gi/picturefile.h"

#include <algorithm>

namespace wb
{

namespace
{

void Resize(FrameBuf &frame, const FrameBuf &source)
{
    frame.Width = source.Width;
    frame.Height = source.Height;
    frame.Pixels.resize(source.Pixels.size());
}

} // namespace

std::int32_t AnimProject::MainWidth() const
{
    return m_list.IsEmpty() ? 0 : m_list.Frames().front().Width;
}

std::int32_t AnimProject::MainHeight() const
{
    return m_list.IsEmpty() ? 0 : m_list.Frames().front().Height;
}

void AnimProject::Clean()
{
    if (IsBusy())
        return;
    const std::int32_t buildNumber = m_buildNumber;
    *this = AnimProject();
    m_buildNumber = buildNumber;
}

bool AnimProject::Append(FrameBuf picture, const QString &name)
{
    const bool isOfSize =
        m_list.IsEmpty() || (picture.Width == MainWidth() && picture.Height == MainHeight());
    if (!isOfSize || !HoldsPicture(picture))
        return false;
    m_list.Add(std::move(picture), name);
    return true;
}

bool AnimProject::AddFrame(FrameBuf picture, const QString &name)
{
    return MayChange() && Append(std::move(picture), name);
}

void AnimProject::AddFrames(std::vector<FrameBuf> pictures, const QStringList &names, const FrameStep &step)
{
    if (MayChange())
        m_job.AddFrames(std::move(pictures), names, step,
                        [this](FrameBuf picture, const QString &name) { Append(std::move(picture), name); });
}

bool AnimProject::AddFiles(const QStringList &paths, const FrameStep &step)
{
    return MayChange() && m_job.AddFiles(paths, step, [&](const QString &path) {
        return Append(ReadPng(path), GetFileName(path));
    });
}

void AnimProject::RemoveSelected()
{
    if (MayChange())
        m_list.RemoveSelected();
}

void AnimProject::MoveSelected(std::int32_t distance)
{
    if (MayChange())
        m_list.MoveSelected(distance);
}

void AnimProject::BuildFrame(std::size_t number)
{
    const FrameBuf &previous = m_list.Frames()[number - 1];
    const FrameBuf &current = m_list.Frames()[number];
    FrameBuf &frame = m_frames[number];
    Resize(frame, current);
    const std::int32_t unshown = Graphics().VTGF_AnimFrame_Build_32(
        frame.Pixels.data(), previous.Pixels.data(), current.Pixels.data(), &frame.Width, &frame.Height);
    m_notShown.Pixels += unshown;
    m_notShown.Frames += unshown != 0 ? 1 : 0;
}

void AnimProject::Build(const FrameStep &step)
{
    const std::int32_t count = m_list.Count();
    if (!MayChange() || count < 2)
        return;
    ++m_buildNumber;
    m_notShown = {};
    m_frames.resize(std::size_t(count));
    Resize(m_frames.front(), m_list.Frames().front());
    std::ranges::fill(m_frames.front().Pixels, std::uint8_t(0));
    m_isGenerated = m_job.Run(step, [&](const GoOn &goOn) {
        for (std::int32_t i = 1; i < count; ++i) {
            BuildFrame(std::size_t(i));
            if (!goOn(i, count - 1))
                return;
        }
    });
}

void AnimProject::GoBack()
{
    if (!IsBusy())
        m_isGenerated = false;
}

const FrameBuf *AnimProject::ShownFrame() const
{
    return m_isGenerated ? &m_frames[std::size_t(m_list.Current())] : m_list.CurrentFrame();
}

void AnimProject::MarkHandedOn(std::int32_t buildNumber)
{
    if (m_isGenerated && buildNumber == m_buildNumber)
        m_list.SetModified(false);
}

SaveEnd AnimProject::WritePngs(const QString &path, const FrameStep &step)
{
    if (IsBusy() || !m_isGenerated)
        return SaveEnd::Failed;
    m_unwritten = -1;
    const bool isComplete = m_job.Run(step, [&](const GoOn &goOn) {
        for (std::int32_t i = 0; i < m_list.Count(); ++i) {
            if (!WritePng(PngPath(path, i), m_frames[std::size_t(i)]) && m_unwritten < 0)
                m_unwritten = i;
            if (!goOn(i + 1, m_list.Count()))
                return;
        }
    });
    if (m_unwritten >= 0)
        return SaveEnd::Failed;
    if (!isComplete)
        return SaveEnd::Stopped;
    m_list.SetModified(false);
    return SaveEnd::Saved;
}

QStringList AnimProject::ReplacedPngs(const QString &path) const
{
    QStringList paths;
    for (std::int32_t i = 0; i < m_list.Count(); ++i)
        if (const QString png = PngPath(path, i); FileExists(png))
            paths << png;
    return paths;
}

QString AnimProject::PngPath(const QString &path, std::int32_t frame)
{
    return PathIn(GetFolder(path), GetFileTitle(path) + u'_' + ZeroPad(frame, 3) + QStringLiteral(".png"));
}

} // namespace wb
