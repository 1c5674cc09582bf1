#include "anim/gaiproject.h"

#include "anim/gaireader.h"
#include "common/paths.h"
#include "common/text.h"
#include "gfx/pixels.h"
#include "gi/giformat.h"
#include "gi/picturefile.h"

#include <algorithm>

namespace wb
{

namespace
{

constexpr std::int32_t GaiBox::*BoxNumbers[] = {&GaiBox::StartX, &GaiBox::StartY, &GaiBox::Width,
                                                &GaiBox::Height};
constexpr std::int32_t FrameBuf::*FrameNumbers[] = {&FrameBuf::X, &FrameBuf::Y, &FrameBuf::Delay};

// So that a frame that was read can be written as the type it has, a type for transparent pictures makes an
// opaque one count as transparent. One that can't be written at all becomes what an added picture gets.
void ClassifyRead(FrameBuf &frame)
{
    const std::int32_t transType = TransTypeOf(frame.Pixels);
    frame.TransType = frame.GiType == 0 ? transType : std::max(transType, 1);
    if (!GiTypeAllowed(frame.GiType, frame.TransType))
        frame.GiType = frame.TransType = transType;
}

} // namespace

void GaiProject::Clean()
{
    if (!IsBusy())
        Empty();
}

void GaiProject::Empty()
{
    m_list.Clear();
    m_box = NoBox;
    m_lastFrame = NoFrame;
}

std::optional<std::int32_t> GaiProject::Open(const QString &path, const FrameStep &step)
{
    GaiContents contents;
    const OpenEnd end = m_job.Open(path, step, [&](ByteView file, const GoOn &goOn) {
        Empty();
        m_fileName.clear();
        contents = {{}, m_box.StartX, m_box.StartY, m_box.Width, m_box.Height, m_options.Background};
        ReadGaiProject(file, contents, goOn);
    });
    if (end == OpenEnd::Failed)
        return std::nullopt;
    if (end == OpenEnd::Stopped)
        return 0;
    m_fileName = GetFileName(path);
    m_box = {contents.StartX, contents.StartY, contents.Width, contents.Height};
    m_options.Background = contents.Background == 1;
    for (FrameBuf &frame : contents.Frames) {
        ClassifyRead(frame);
        m_list.Add(std::move(frame),
                   GetFileTitle(path) + u'_' + ZeroPad(m_list.Count(), 3) + QStringLiteral(".gi"));
    }
    m_list.SetModified(false);
    return contents.LeftOut;
}

SaveEnd GaiProject::Save(const QString &path, const FrameStep &step)
{
    if (IsBusy())
        return SaveEnd::Failed;
    m_fileName = GetFileName(path);
    const SaveEnd end = m_job.Save(
        path, step, [&](const GoOn &goOn) { return WriteGai(m_box, m_list.Frames(), m_options, goOn); });
    if (end == SaveEnd::Saved)
        m_list.SetModified(false);
    return end;
}

void GaiProject::SetOptions(const GaiWriting &options)
{
    if (IsBusy())
        return;
    // The others only say how the same animation is stored.
    if (options.Background != m_options.Background)
        m_list.SetModified(true);
    m_options = options;
}

bool GaiProject::Append(FrameBuf frame, const QString &name)
{
    if (!HoldsPicture(frame))
        return false;
    const bool isFirst = m_list.IsEmpty();
    frame.Delay = Value(Delay);
    frame.GiType = frame.TransType = TransTypeOf(frame.Pixels);
    if (isFirst) {
        m_box.Width = frame.Width;
        m_box.Height = frame.Height;
    }
    m_list.Add(std::move(frame), name);
    return true;
}

FrameBuf GaiProject::AtStart(FrameBuf picture) const
{
    picture.X = m_box.StartX;
    picture.Y = m_box.StartY;
    return picture;
}

void GaiProject::AddPictures(std::vector<FrameBuf> pictures, const QStringList &names, const FrameStep &step)
{
    m_job.AddFrames(std::move(pictures), names, step, [this](FrameBuf picture, const QString &name) {
        Append(AtStart(std::move(picture)), name);
    });
}

void GaiProject::AddGis(std::vector<FrameBuf> pictures, const QStringList &names, const FrameStep &step)
{
    m_job.AddFrames(std::move(pictures), names, step,
                    [this](FrameBuf picture, const QString &name) { Append(std::move(picture), name); });
}

bool GaiProject::AddFiles(const QStringList &paths, const FrameStep &step)
{
    return m_job.AddFiles(paths, step, [&](const QString &path) {
        FrameBuf picture = ReadPngOrGi(path);
        const bool isPlaced = !picture.Kind.empty(); // a GI
        return Append(isPlaced ? std::move(picture) : AtStart(std::move(picture)), GetFileName(path));
    });
}

void GaiProject::RemoveSelected()
{
    if (IsBusy())
        return;
    if (m_list.Count() == 1)
        m_lastFrame = {Value(X), Value(Y), Value(Delay)};
    m_list.RemoveSelected();
}

void GaiProject::MoveSelected(std::int32_t distance)
{
    if (!IsBusy())
        m_list.MoveSelected(distance);
}

std::int32_t GaiProject::Value(Field field) const
{
    if (field < X)
        return m_box.*BoxNumbers[field];
    const FrameBuf *frame = m_list.CurrentFrame();
    return frame != nullptr ? frame->*FrameNumbers[field - X] : m_lastFrame[std::size_t(field - X)];
}

void GaiProject::Change(Field field, std::int32_t value)
{
    FrameBuf *frame = m_list.CurrentFrame();
    if (IsBusy() || value == Value(field) || (field >= X && frame == nullptr))
        return;
    (field < X ? m_box.*BoxNumbers[field] : frame->*FrameNumbers[field - X]) = value;
    m_list.SetModified(true);
}

void GaiProject::SetValue(Field field, std::int64_t value)
{
    Change(field, std::int32_t(std::clamp<std::int64_t>(value, Value(field) < 0 ? -MaxValue : 0, MaxValue)));
}

void GaiProject::StepUp(Field field)
{
    if (Value(field) < MaxValue)
        Change(field, Value(field) + 1);
}

void GaiProject::StepDown(Field field)
{
    if (Value(field) >= 1)
        Change(field, Value(field) - 1);
}

void GaiProject::CopyToAll(Field field)
{
    if (IsBusy() || field < X)
        return;
    const std::int32_t value = Value(field);
    for (FrameBuf &frame : m_list.Frames()) {
        if (frame.*FrameNumbers[field - X] != value)
            m_list.SetModified(true);
        frame.*FrameNumbers[field - X] = value;
    }
}

std::int32_t GaiProject::GiType() const
{
    const FrameBuf *frame = m_list.CurrentFrame();
    return frame != nullptr ? frame->GiType : -1;
}

bool GaiProject::CanChooseType(std::int32_t type) const
{
    const FrameBuf *frame = m_list.CurrentFrame();
    return frame != nullptr && GiTypeAllowed(type, frame->TransType);
}

void GaiProject::SetGiType(std::int32_t type)
{
    if (IsBusy() || !CanChooseType(type) || type == GiType())
        return;
    m_list.CurrentFrame()->GiType = type;
    m_list.SetModified(true);
}

void GaiProject::CopyTypeToAll()
{
    if (IsBusy())
        return;
    const std::int32_t type = GiType();
    for (FrameBuf &frame : m_list.Frames())
        if (frame.GiType != type && GiTypeAllowed(type, frame.TransType)) {
            frame.GiType = type;
            m_list.SetModified(true);
        }
}

} // namespace wb
