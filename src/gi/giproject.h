// What the GI creator page works on: a picture that becomes a GI, or a GI that gets another place.
#pragma once

#include "gfx/framebuf.h"

#include <QString>

#include <array>
#include <cstdint>
#include <functional>
#include <memory>

namespace wb
{

class GiProject
{
public:
    enum Axis { X, Y };
    static constexpr std::int32_t MaxStart = 99999;
    static constexpr std::int32_t ViewCount = 4; // the whole picture and three layers

    // --- What is loaded

    bool SourceLoaded() const { return m_content == Content::Picture; } // is encoded when saved
    bool GiLoaded() const { return m_content == Content::Gi; }          // is moved when saved
    bool IsLoaded() const { return m_content != Content::Nothing; }
    bool IsBusy() const { return m_isBusy; } // a picture is being encoded

    const QString &SourcePath() const { return m_sourcePath; }
    std::int32_t SourceWidth() const { return Picture().Width; }
    std::int32_t SourceHeight() const { return Picture().Height; }
    std::int32_t TransType() const { return m_transType; }
    std::int32_t GiType() const { return m_giType; } // of an opened GI whatever its header says

    // Takes everything back to what it was at the start.
    void Clean();

    // Each cleans first and takes the picture then; False, with nothing loaded, when there is none. The
    // handle stays with the caller.
    bool TakePicture(std::int32_t handle, const QString &path);
    bool OpenPng(const QString &path);

    // Cleans, and loads the file with the place and type that its header says. A file that is no GI is loaded
    // too, with an empty picture at 0, 0; False, with nothing loaded, when it can't be read or has no bytes.
    bool OpenGi(const QString &path);

    // --- What is chosen

    // A number from 0 to MaxStart; only an opened GI can lie elsewhere. What is set beyond is brought inside.
    std::int32_t Start(Axis axis) const { return m_start[axis]; }
    void SetStart(Axis axis, std::int64_t value);

    // Add or subtract 1, unless the number has reached the end of its range.
    void StepUp(Axis axis);
    void StepDown(Axis axis);

    // Nothing changes when the type is not offered.
    void SetGiType(std::int32_t type);

    // --- What the page offers

    bool CanSave() const { return SourceLoaded() || (GiLoaded() && !m_isBusy); } // and clean, and pan
    bool CanPlace() const { return IsLoaded() && !m_isBusy; }
    bool CanCrop() const { return SourceLoaded() && !m_isBusy && m_transType >= 1; }
    bool CanChooseType(std::int32_t type) const;
    bool CanShow(std::int32_t view) const;

    // The pixel format that the type means for this picture: 0 for 16 bits, 1 for 32 bits.
    std::int32_t Colour() const { return m_transType > 0 && (m_giType == 0 || m_giType == 4) ? 1 : 0; }

    // View 0, and views 1 to 3: the first to third layer of a GI of it, as pictures of the same size. Empty
    // when no picture is loaded.
    const FrameBuf &Picture() const { return *m_picture; }
    FrameBuf Layer(std::int32_t view) const;

    // --- What is saved

    // The file: the picture encoded as the type chosen, or the opened GI at its new place with no other byte
    // changed. No bytes when nothing is loaded, or when the project is busy.
    //
    // While a picture is encoded the project is busy, and `yield` is called before the first layer and after
    // each. Whatever happens to the project meanwhile, the file is that of the state at the call.
    ByteArray MakeFile(bool crop, const std::function<void()> &yield = {});

private:
    enum class Content { Nothing, Picture, Gi };

    ByteArray Encode(bool crop, const std::function<void()> &yield);
    ByteArray Moved() const;

    Content m_content = Content::Nothing;
    bool m_isBusy = false;
    QString m_sourcePath;
    std::array<std::int32_t, 2> m_start{};
    std::int32_t m_giType = 0;
    std::int32_t m_transType = 0;
    std::shared_ptr<FrameBuf> m_picture = std::make_shared<FrameBuf>(); // an encoding may outlast it here
    ByteArray m_loadedGi;
};

} // namespace wb
