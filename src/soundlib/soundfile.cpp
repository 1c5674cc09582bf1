#include "soundlib/soundfile.h"

namespace soundlib
{

std::unique_ptr<SoundFile> SoundFile::Open(SoundSource source)
{
    if (source.Size() == 0)
        return nullptr;
    std::unique_ptr<SoundFile> sound(new SoundFile(std::move(source)));
    SF_VIRTUAL_IO calls = SoundSource::Calls();
    sound->m_decoder.reset(sf_open_virtual(&calls, SFM_READ, &sound->m_info, &sound->m_source));
    if (sound->m_decoder == nullptr || !sound->IsPlayable())
        return nullptr;
    return sound;
}

// The decoder knows many more kinds, which the viewer would call by a wrong name.
bool SoundFile::IsPlayable() const
{
    const int container = m_info.format & SF_FORMAT_TYPEMASK;
    const int coding = m_info.format & SF_FORMAT_SUBMASK;
    const bool isBigEndian = (m_info.format & SF_FORMAT_ENDMASK) == SF_ENDIAN_BIG; // RIFX
    const bool isWav = (container == SF_FORMAT_WAV || container == SF_FORMAT_WAVEX) && !isBigEndian;
    const bool isMp3 = container == SF_FORMAT_MPEG && coding == SF_FORMAT_MPEG_LAYER_III;
    return (isWav || isMp3) && m_info.frames > 0 && Channels() >= 1 && Channels() <= MaxChannels &&
           Rate() >= LowestRate && Rate() <= HighestRate;
}

std::span<float> SoundFile::Read(std::span<float> target)
{
    const auto channels = static_cast<std::size_t>(Channels());
    const auto room = static_cast<sf_count_t>(target.size() / channels);
    const sf_count_t frames = sf_readf_float(m_decoder.get(), target.data(), room);
    return target.first(frames > 0 ? static_cast<std::size_t>(frames) * channels : 0);
}

void SoundFile::Rewind()
{
    sf_seek(m_decoder.get(), 0, SEEK_SET);
}

} // namespace soundlib
