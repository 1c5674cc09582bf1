#include "anim/gaiproject.h"

#include "anim/gaireader.h"
#include "common/files.h"
#include "common/paths.h"
#include "common/text.h"
#include "gfx/graphicslibrary.h"
#include "gfx/pixels.h"
#include "gi/gidocument.h"
#include "gi/giformat.h"
#include "platform/nativepath.h"

#include <QScopedValueRollback>

#include <algorithm>

namespace wb
{

namespace
{

constexpr std::int32_t GaiBox::*BoxNumbers[] = {&GaiBox::StartX, &GaiBox::StartY, &GaiBox::Width,
                                                &GaiBox::Height};
constexpr std::int32_t FrameBuf::*FrameNumbers[] = {&FrameBuf::X, &FrameBuf::Y, &FrameBuf::Delay};

} // namespace

void GaiProject::Clean()
{
    if (m_isBusy)
        return;
    m_list.Clear();
    m_box = NoBox;
    m_lastFrame = NoFrame;
    m_isModified = false;
}

bool GaiProject::Open(const QString &path, const Step &step)
{
    if (m_isBusy)
        return false;
    m_fileName = GetFileName(path);
    ByteArray file;
    if (ReadFileBytes(path, file) == 0)
        return false;
    Clean();
    const QScopedValueRollback busy(m_isBusy, true);
    GaiContents contents = {{}, m_box.StartX, m_box.StartY, m_box.Width, m_box.Height, m_options.Background};
    ReadGaiProject(file, contents, step);
    m_box = {contents.StartX, contents.StartY, contents.Width, contents.Height};
    m_options.Background = contents.Background == 1;
    for (FrameBuf &frame : contents.Frames) {
        frame.TransType = TransTypeOf(frame);
        m_list.Add(std::move(frame),
                   GetFileTitle(path) + u'_' + ZeroPad(m_list.Count(), 3) + QStringLiteral(".gi"));
    }
    return true;
}

bool GaiProject::Save(const QString &path, const Step &step)
{
    if (m_isBusy)
        return false;
    const QScopedValueRollback busy(m_isBusy, true);
    m_fileName = GetFileName(path);
    const ByteArray file = WriteGai(m_box, m_list.Frames(), m_options, step); // empty when it gets too large
    const bool isWritten = !file.empty() && WriteFileBytes(path, file);
    if (isWritten)
        m_isModified = false;
    return isWritten;
}

void GaiProject::SetOptions(const GaiWriting &options)
{
    if (m_isBusy)
        return;
    // The others only say how the same animation is stored.
    if (options.Background != m_options.Background)
        m_isModified = true;
    m_options = options;
}

void GaiProject::Append(FrameBuf frame, const QString &name)
{
    const bool isFirst = m_list.IsEmpty();
    frame.Delay = Value(Delay);
    frame.GiType = frame.TransType = TransTypeOf(frame);
    if (isFirst) {
        m_box.Width = frame.Width;
        m_box.Height = frame.Height;
    }
    m_list.Add(std::move(frame), name);
    m_isModified = true;
}

bool GaiProject::AddPicture(std::int32_t handle, const QString &name)
{
    FrameBuf frame = DibToFrameBuf(handle);
    if (m_isBusy || !HoldsPicture(frame))
        return false;
    frame.X = m_box.StartX;
    frame.Y = m_box.StartY;
    Append(std::move(frame), name);
    return true;
}

bool GaiProject::AddGi(FrameBuf picture, const QString &name)
{
    if (m_isBusy || !HoldsPicture(picture))
        return false;
    Append(std::move(picture), name);
    return true;
}

bool GaiProject::AddFiles(const QStringList &paths, const Step &step)
{
    bool areAllAdded = true;
    m_isStopping = false;
    for (qsizetype i = 0; i < paths.size() && !m_isBusy && !m_isStopping; ++i) {
        const QString &path = paths[i];
        if (!AddPng(path) && !AddGi(LoadGiFile(path), GetFileName(path)) && FileExists(path))
            areAllAdded = false;
        const QScopedValueRollback busy(m_isBusy, true);
        step(std::int32_t(i + 1), std::int32_t(paths.size()));
    }
    return areAllAdded;
}

bool GaiProject::AddPng(const QString &path)
{
    const std::int32_t handle = Graphics().VTGF_Read_PNG_File(ToNativePath(path).c_str());
    const bool isAdded = AddPicture(handle, GetFileName(path));
    Graphics().VTGF_DIB_Free(handle);
    return isAdded;
}

void GaiProject::RemoveSelected()
{
    if (m_isBusy)
        return;
    if (m_list.Count() == 1)
        m_lastFrame = {Value(X), Value(Y), Value(Delay)};
    if (m_list.RemoveSelected())
        m_isModified = true;
}

void GaiProject::MoveSelected(std::int32_t distance)
{
    if (!m_isBusy && m_list.MoveSelected(distance))
        m_isModified = true;
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
    if (m_isBusy || value == Value(field) || (field >= X && frame == nullptr))
        return;
    (field < X ? m_box.*BoxNumbers[field] : frame->*FrameNumbers[field - X]) = value;
    m_isModified = true;
}

void GaiProject::SetValue(Field field, std::int64_t value)
{
    Change(field, std::int32_t(std::clamp<std::int64_t>(value, 0, MaxValue)));
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
    if (m_isBusy || field < X)
        return;
    const std::int32_t value = Value(field);
    for (FrameBuf &frame : m_list.Frames()) {
        m_isModified |= frame.*FrameNumbers[field - X] != value;
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
    if (m_isBusy || !CanChooseType(type) || type == GiType())
        return;
    m_list.CurrentFrame()->GiType = type;
    m_isModified = true;
}

void GaiProject::CopyTypeToAll()
{
    if (m_isBusy)
        return;
    const std::int32_t type = GiType();
    for (FrameBuf &frame : m_list.Frames())
        if (frame.GiType != type && GiTypeAllowed(type, frame.TransType)) {
            frame.GiType = type;
            m_isModified = true;
        }
}

} // namespace wb
