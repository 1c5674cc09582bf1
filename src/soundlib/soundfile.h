// A WAV or MP3 that is being decoded.
#pragma once

#include "soundlib/soundsource.h"

#include <memory>
#include <span>

namespace soundlib
{

class SoundFile
{
public:
    // Null for what is no sound that the library plays (soundlib.h).
    static std::unique_ptr<SoundFile> Open(SoundSource source);

    static constexpr int MaxChannels = 8;
    static constexpr int LowestRate = 1'000;
    static constexpr int HighestRate = 384'000;

    int Rate() const { return m_info.samplerate; }
    int Channels() const { return m_info.channels; }

    // Fills `target`, which has room for at least one sample of each channel, with the samples that follow,
    // full scale being 1. Gives those that were read: fewer towards the end, none at the end.
    std::span<float> Read(std::span<float> target);
    void Rewind();

private:
    struct CloseDecoder {
        void operator()(SNDFILE *decoder) const { sf_close(decoder); }
    };

    explicit SoundFile(SoundSource source) : m_source(std::move(source)) {}
    bool IsPlayable() const;

    SoundSource m_source; // outlives the decoder, which reads from it
    SF_INFO m_info{};
    std::unique_ptr<SNDFILE, CloseDecoder> m_decoder;
};

} // namespace soundlib
