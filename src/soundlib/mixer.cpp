#include "soundlib/mixer.h"

#include <SDL2/SDL.h>

#include <algorithm>
#include <utility>

namespace soundlib
{

namespace
{

constexpr Uint16 BufferedSamples = 1024; // 23 ms

}

bool Mixer::Init(int frequency)
{
    if (m_isInitialised)
        return false;
    m_frequency = frequency == 0 ? DefaultFrequency : frequency;
    m_isInitialised = true;
    return true;
}

bool Mixer::Start()
{
    m_isStarted = m_isInitialised;
    return m_isStarted;
}

void Mixer::Stop()
{
    m_isStarted = false;
    CloseDevice();
    for (const auto &[handle, channel] : m_channels)
        channel->Stop();
}

void Mixer::Free()
{
    Stop();
    m_channels.clear();
    m_isInitialised = false;
}

std::int32_t Mixer::Add(std::unique_ptr<SoundFile> sound)
{
    if (sound == nullptr)
        return 0;
    auto channel = std::make_unique<Channel>(std::move(sound));
    const std::lock_guard lock(m_mutex);
    m_channels.emplace(++m_lastHandle, std::move(channel));
    return m_lastHandle;
}

void Mixer::Remove(std::int32_t handle)
{
    const std::lock_guard lock(m_mutex);
    m_channels.erase(handle);
}

bool Mixer::Play(std::int32_t handle, bool restart)
{
    Channel *channel = Find(handle);
    if (channel == nullptr || !m_isStarted || !OpenDevice())
        return false;
    const std::lock_guard lock(m_mutex);
    if (restart)
        channel->Rewind();
    return channel->Play(m_frequency);
}

Channel *Mixer::Find(std::int32_t handle) const
{
    const auto channel = m_channels.find(handle);
    return channel == m_channels.end() ? nullptr : channel->second.get();
}

bool Mixer::OpenDevice()
{
    // A device that was pulled out is tried for anew.
    if (m_device != 0 && SDL_GetAudioDeviceStatus(m_device) != SDL_AUDIO_STOPPED)
        return true;
    CloseDevice();
    // Otherwise the events, which come with the sound, would take the program's Ctrl+C.
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    if (SDL_InitSubSystem(SDL_INIT_AUDIO) != 0)
        return false;
    SDL_AudioSpec wanted{};
    wanted.freq = m_frequency;
    wanted.format = OutputFormat;
    wanted.channels = OutputChannels;
    wanted.samples = BufferedSamples;
    wanted.userdata = this;
    wanted.callback = [](void *user, Uint8 *target, int bytes) {
        static_cast<Mixer *>(user)->Mix({target, static_cast<std::size_t>(bytes)});
    };
    m_device = SDL_OpenAudioDevice(nullptr, 0, &wanted, nullptr, 0);
    if (m_device == 0) {
        SDL_QuitSubSystem(SDL_INIT_AUDIO);
        return false;
    }
    SDL_PauseAudioDevice(m_device, 0);
    return true;
}

void Mixer::CloseDevice()
{
    if (m_device == 0)
        return;
    SDL_CloseAudioDevice(std::exchange(m_device, 0));
    SDL_QuitSubSystem(SDL_INIT_AUDIO);
}

void Mixer::Mix(std::span<std::uint8_t> target)
{
    std::ranges::fill(target, std::uint8_t(0));
    const std::lock_guard lock(m_mutex);
    for (const auto &[handle, channel] : m_channels)
        channel->Mix(target);
}

} // namespace soundlib
