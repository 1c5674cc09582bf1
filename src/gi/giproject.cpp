#include "gi/giproject.h"

#include "common/files.h"
#include "gfx/graphicslibrary.h"
#include "gfx/pixels.h"
#include "gi/gidecoder.h"
#include "gi/giencoder.h"
#include "gi/giformat.h"
#include "platform/nativepath.h"

#include <QScopedValueRollback>

#include <algorithm>

namespace wb
{

void GiProject::Clean()
{
    m_content = Content::Nothing;
    m_sourcePath.clear();
    m_start = {};
    m_giType = m_transType = 0;
    m_picture = std::make_shared<FrameBuf>();
    m_loadedGi = ByteArray();
}

bool GiProject::TakePicture(std::int32_t handle, const QString &path)
{
    Clean();
    FrameBuf picture = DibToFrameBuf(handle);
    if (!HoldsPicture(picture))
        return false;
    m_content = Content::Picture;
    m_sourcePath = path;
    m_transType = Graphics().VTGF_DIB_GetTransType(handle);
    *m_picture = std::move(picture);
    return true;
}

bool GiProject::OpenPng(const QString &path)
{
    const std::int32_t handle = Graphics().VTGF_Read_PNG_File(ToNativePath(path).c_str());
    const bool isTaken = TakePicture(handle, path);
    Graphics().VTGF_DIB_Free(handle);
    return isTaken;
}

bool GiProject::OpenGi(const QString &path)
{
    Clean();
    if (ReadFileBytes(path, m_loadedGi) == 0)
        return false;
    m_content = Content::Gi;
    m_sourcePath = path;
    if (const auto header = ReadGiHeader(m_loadedGi, 0)) {
        m_start = {header->Bounds.Left, header->Bounds.Top};
        m_giType = header->Type;
    }
    std::int32_t offset = 0;
    DecodeGi(*m_picture, m_loadedGi, offset);
    m_transType = TransTypeOf(m_picture->Pixels);
    return true;
}

void GiProject::SetStart(Axis axis, std::int64_t value)
{
    m_start[axis] = std::int32_t(std::clamp<std::int64_t>(value, 0, MaxStart));
}

void GiProject::StepUp(Axis axis)
{
    if (m_start[axis] < MaxStart)
        ++m_start[axis];
}

void GiProject::StepDown(Axis axis)
{
    if (m_start[axis] >= 1)
        --m_start[axis];
}

void GiProject::SetGiType(std::int32_t type)
{
    if (CanChooseType(type))
        m_giType = type;
}

bool GiProject::CanChooseType(std::int32_t type) const
{
    return SourceLoaded() && !m_isBusy && GiTypeAllowed(type, m_transType);
}

bool GiProject::CanShow(std::int32_t view) const
{
    const std::int32_t layers = m_giType == 2 || m_giType == 3 ? GiLayerCount(m_giType) : 0;
    return IsLoaded() && !m_isBusy && view >= 0 && view <= layers;
}

FrameBuf GiProject::Layer(std::int32_t view) const
{
    FrameBuf layer;
    const FrameBuf &picture = Picture();
    if (view < 1 || view >= ViewCount || !HoldsPicture(picture))
        return layer;
    layer.Width = picture.Width;
    layer.Height = picture.Height;
    layer.Pixels.resize(picture.Pixels.size());
    const GraphicsLibrary &graphics = Graphics();
    const std::array copies = {graphics.VTGF_TransBuf_Copy_32, graphics.VTGF_TransAlphaBuf_Copy_32,
                               graphics.VTGF_AlphaBuf_Copy_32};
    const auto bytes = std::int32_t(picture.Pixels.size());
    copies[std::size_t(view - 1)](layer.Pixels.data(), &bytes, picture.Pixels.data(), &bytes);
    return layer;
}

ByteArray GiProject::MakeFile(bool crop, const std::function<void()> &yield)
{
    if (m_isBusy)
        return {};
    return SourceLoaded() ? Encode(crop, yield) : Moved();
}

ByteArray GiProject::Encode(bool crop, const std::function<void()> &yield)
{
    const QScopedValueRollback busy(m_isBusy, true);
    const std::shared_ptr<FrameBuf> picture = m_picture;
    picture->X = m_start[X];
    picture->Y = m_start[Y];
    const std::int32_t type = m_giType;
    const std::int32_t transType = m_transType;
    if (yield)
        yield();
    ByteArray file;
    EncodeGi(file, *picture, type, transType, crop, yield);
    return file;
}

ByteArray GiProject::Moved() const
{
    ByteArray file = m_loadedGi;
    const auto header = ReadGiHeader(file, 0);
    if (!header)
        return file;
    // What can't be decoded keeps the size that its header says.
    const bool isEmpty = !HoldsPicture(Picture());
    MoveGi(file, m_start[X], m_start[Y], isEmpty ? header->Bounds.Width() : SourceWidth(),
           isEmpty ? header->Bounds.Height() : SourceHeight());
    return file;
}

} // namespace wb
