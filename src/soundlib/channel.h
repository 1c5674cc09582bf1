// A stream: a sound, how far it has been played, and how loud.
#pragma once

#include "soundlib/soundfile.h"

#include <SDL2/SDL_audio.h>

#include <array>
#include <atomic>
#include <memory>
#include <span>

namespace soundlib
{

// The form of what is mixed: this many channels of float samples.
inline constexpr SDL_AudioFormat OutputFormat = AUDIO_F32SYS;
inline constexpr int OutputChannels = 2;
inline constexpr int FullVolume = 100;

// One thread plays, rewinds and mixes at a time. Everything else may be called meanwhile by another: it waits
// for no file that is read and no sound that is decoded.
class Channel
{
public:
    explicit Channel(std::unique_ptr<SoundFile> sound) : m_sound(std::move(sound)) {}

    int Rate() const { return m_sound->Rate(); }

    int Volume() const { return m_volume; }
    void SetVolume(int volume) { m_volume = volume; }

    bool IsPlaying() const { return m_isPlaying; }

    // From now on Mix gives the sound at that rate, from where it was stopped; false when it can't.
    bool Play(int outputRate);
    void Stop() { m_isPlaying = false; }

    // The next Play begins at the beginning.
    void Rewind();

    // Adds what sounds next to `target`, bytes of whole samples of the output. Stops at the sound's end.
    void Mix(std::span<std::uint8_t> target);

private:
    struct FreeConverter {
        void operator()(SDL_AudioStream *converter) const { SDL_FreeAudioStream(converter); }
    };

    void Feed();
    void Pad();
    std::int64_t FramesLeft() const;

    std::unique_ptr<SoundFile> m_sound;
    std::unique_ptr<SDL_AudioStream, FreeConverter> m_converter; // to the output's rate and channels
    std::array<float, std::size_t(SoundFile::MaxChannels) * 256> m_decoded;
    std::array<float, std::size_t(OutputChannels) * 512> m_converted;
    std::atomic<int> m_volume = FullVolume;
    std::atomic<bool> m_isPlaying = false;
    bool m_isDecoded = false; // to its end
    int m_outputRate = 0;
    std::int64_t m_framesIn = 0; // decoded since the beginning
    std::int64_t m_framesOut = 0;
};

} // namespace soundlib
