// The document that every format opens into: a sequence of pictures, or a sound.
#pragma once

#include "common/bytearray.h"

#include <cstdint>
#include <string>
#include <vector>

namespace wb
{

enum class DocumentMode : std::int32_t { Released = -1, Pictures = 0, Sound = 1 };

// Owns every handle in `Pictures`: it moves, but is never copied, and frees them when it goes.
struct FrameSet {
    DocumentMode Mode = DocumentMode::Pictures;
    std::string Kind;     // "BMP", "JPG", "PNG", "PSD", "DDS", "GI", ...; empty: nothing was loaded
    std::string InfoText; // the frame type of a GI, or a sound's frequency in Hz, as decimal text; else empty
    std::int32_t Count = 0;               // frames, 1 for a sound; 0 when loading failed
    std::vector<std::int32_t> Pictures;   // a picture handle for each frame, 0 if empty; a sound's stream
    std::vector<std::int32_t> FrameTypes; // one GI type a frame, for documents of GI frames
    std::int32_t LeftOut = 0;             // further frames that memory did not suffice for
    ByteArray SoundBytes;                 // what the stream of a sound in memory reads

    FrameSet() = default;
    FrameSet(FrameSet &&other) noexcept;
    FrameSet &operator=(FrameSet &&other) noexcept;
    ~FrameSet();
};

// A document of the one picture `handle`, which it takes over; an empty document when the handle is 0.
FrameSet StillPicture(std::string kind, std::int32_t handle);

// A document of the sound `handle`, which it takes over; an empty document when the handle is 0.
FrameSet SoundDocument(std::string kind, std::int32_t handle);

// Frees what the document holds and leaves it released. A document without frames stays as it is.
void FreeFrameSet(FrameSet &document);

} // namespace wb
