#include "soundlib/channel.h"

#include <algorithm>
#include <limits>

namespace soundlib
{

namespace
{

constexpr std::int64_t FrameBytes = OutputChannels * sizeof(float);

}

bool Channel::Play(int outputRate)
{
    if (m_converter == nullptr)
        m_converter.reset(SDL_NewAudioStream(OutputFormat, static_cast<Uint8>(m_sound->Channels()),
                                             m_sound->Rate(), OutputFormat, OutputChannels, outputRate));
    m_outputRate = outputRate;
    m_isPlaying = m_converter != nullptr;
    return m_isPlaying;
}

void Channel::Rewind()
{
    m_sound->Rewind();
    m_isDecoded = false;
    m_framesIn = 0;
    m_framesOut = 0;
    if (m_converter != nullptr)
        SDL_AudioStreamClear(m_converter.get());
}

void Channel::Mix(std::span<std::uint8_t> target)
{
    const int volume = (m_volume * SDL_MIX_MAXVOLUME + FullVolume / 2) / FullVolume;
    while (m_isPlaying && !target.empty()) {
        const auto room = static_cast<std::int64_t>(std::min(target.size(), sizeof m_converted));
        const std::int64_t wanted = std::min(room / FrameBytes, FramesLeft());
        const int got =
            SDL_AudioStreamGet(m_converter.get(), m_converted.data(), static_cast<int>(wanted * FrameBytes));
        if (got > 0) {
            SDL_MixAudioFormat(target.data(), reinterpret_cast<const Uint8 *>(m_converted.data()),
                               OutputFormat, static_cast<Uint32>(got), volume);
            target = target.subspan(static_cast<std::size_t>(got));
            m_framesOut += got / FrameBytes;
        } else if (!m_isDecoded) {
            Feed();
        } else {
            Stop();
            Rewind();
        }
    }
}

// Gives the converter more to convert.
void Channel::Feed()
{
    const std::span<float> decoded = m_sound->Read(m_decoded);
    m_framesIn += static_cast<std::int64_t>(decoded.size()) / m_sound->Channels();
    m_isDecoded = decoded.empty();
    if (m_isDecoded)
        Pad();
    else
        SDL_AudioStreamPut(m_converter.get(), decoded.data(), static_cast<int>(decoded.size_bytes()));
}

// The converter keeps back what it needs to look ahead, 512 samples at the lower of the two rates. Silence
// pushes it out; flushing would not always.
void Channel::Pad()
{
    m_decoded.fill(0);
    const std::int64_t samples = std::max(1024, m_sound->Rate() / 16) * std::int64_t(m_sound->Channels());
    const auto perPut =
        static_cast<std::int64_t>(m_decoded.size()) / m_sound->Channels() * m_sound->Channels();
    for (std::int64_t put = 0; put < samples; put += perPut)
        SDL_AudioStreamPut(m_converter.get(), m_decoded.data(), static_cast<int>(perPut * sizeof(float)));
}

// What the sound comes to at the output's rate; the silence behind it does not count.
std::int64_t Channel::FramesLeft() const
{
    if (!m_isDecoded)
        return std::numeric_limits<std::int64_t>::max();
    return (m_framesIn * m_outputRate + m_sound->Rate() - 1) / m_sound->Rate() - m_framesOut;
}

} // namespace soundlib
