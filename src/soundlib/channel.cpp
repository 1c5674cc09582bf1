#include "soundlib/channel.h"

#include <algorithm>

namespace soundlib
{

bool Channel::Play(int outputRate)
{
    if (m_converter == nullptr)
        m_converter.reset(SDL_NewAudioStream(OutputFormat, static_cast<Uint8>(m_sound->Channels()),
                                             m_sound->Rate(), OutputFormat, OutputChannels, outputRate));
    m_isPlaying = m_converter != nullptr;
    return m_isPlaying;
}

void Channel::Rewind()
{
    m_sound->Rewind();
    m_isFlushed = false;
    if (m_converter != nullptr)
        SDL_AudioStreamClear(m_converter.get());
}

void Channel::Mix(std::span<std::uint8_t> target)
{
    const int volume = (m_volume * SDL_MIX_MAXVOLUME + FullVolume / 2) / FullVolume;
    while (m_isPlaying && !target.empty()) {
        const auto wanted = static_cast<int>(std::min(target.size(), sizeof m_converted));
        const int got = SDL_AudioStreamGet(m_converter.get(), m_converted.data(), wanted);
        if (got > 0) {
            SDL_MixAudioFormat(target.data(), reinterpret_cast<const Uint8 *>(m_converted.data()),
                               OutputFormat, static_cast<Uint32>(got), volume);
            target = target.subspan(static_cast<std::size_t>(got));
        } else if (!Feed()) {
            Stop();
            Rewind();
        }
    }
}

// Gives the converter more to convert; false when it has had everything.
bool Channel::Feed()
{
    if (m_isFlushed)
        return false;
    const std::span<float> decoded = m_sound->Read(m_decoded);
    m_isFlushed = decoded.empty();
    if (m_isFlushed)
        SDL_AudioStreamFlush(m_converter.get());
    else
        SDL_AudioStreamPut(m_converter.get(), decoded.data(), static_cast<int>(decoded.size_bytes()));
    return true;
}

} // namespace soundlib
