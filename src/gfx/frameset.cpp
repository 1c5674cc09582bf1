#include "gfx/frameset.h"

#include "gfx/graphicslibrary.h"
#include "sound/sound.h"

#include <utility>

namespace wb
{

FrameSet::FrameSet(FrameSet &&other) noexcept
{
    *this = std::move(other);
}

FrameSet &FrameSet::operator=(FrameSet &&other) noexcept
{
    if (this != &other) {
        FreeFrameSet(*this);
        Mode = std::exchange(other.Mode, DocumentMode::Released);
        Kind = std::exchange(other.Kind, {});
        InfoText = std::exchange(other.InfoText, {});
        Count = std::exchange(other.Count, 0);
        Pictures = std::exchange(other.Pictures, {});
        FrameTypes = std::exchange(other.FrameTypes, {});
        LeftOut = std::exchange(other.LeftOut, 0);
        SoundBytes = std::exchange(other.SoundBytes, {});
    }
    return *this;
}

FrameSet::~FrameSet()
{
    FreeFrameSet(*this);
}

FrameSet StillPicture(std::string kind, std::int32_t handle)
{
    FrameSet document;
    if (handle == 0)
        return document;
    document.Kind = std::move(kind);
    document.Count = 1;
    document.Pictures = {handle};
    return document;
}

FrameSet SoundDocument(std::string kind, std::int32_t handle)
{
    FrameSet document = StillPicture(std::move(kind), handle);
    if (document.Count == 0)
        return document;
    document.Mode = DocumentMode::Sound;
    document.InfoText = std::to_string(SoundFrequency(handle));
    return document;
}

void FreeFrameSet(FrameSet &document)
{
    if (document.Count <= 0)
        return;
    for (const std::int32_t handle : document.Pictures)
        if (document.Mode == DocumentMode::Sound)
            FreeSound(handle);
        else
            Graphics().VTGF_DIB_Free(handle);
    document.Mode = DocumentMode::Released;
    document.Kind.clear();
    document.InfoText.clear();
    document.Count = 0;
    document.Pictures.clear();
    document.FrameTypes.clear();
    document.LeftOut = 0;
    document.SoundBytes = {};
}

} // namespace wb
