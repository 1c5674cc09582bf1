#include "soundlib/device.h"

#include "soundlib/channel.h"

#include <SDL2/SDL.h>

#include <chrono>
#include <utility>

namespace soundlib
{

namespace
{

constexpr Uint16 BufferedSamples = 1024; // 23 ms
constexpr std::chrono::seconds BetweenLooks(1);

} // namespace

Device::Device(std::function<void(std::span<std::uint8_t>)> mix, std::function<bool()> isPlaying)
    : m_mix(std::move(mix)), m_isPlaying(std::move(isPlaying))
{
}

bool Device::Open(int frequency)
{
    if (IsOpen())
        return true;
    Close();
    return Start(frequency);
}

// A device that was pulled out is tried for anew.
bool Device::IsOpen()
{
    const std::lock_guard lock(m_mutex);
    m_isIdle = false;
    return m_id != 0 && SDL_GetAudioDeviceStatus(m_id) != SDL_AUDIO_STOPPED;
}

bool Device::Start(int frequency)
{
    // Otherwise the events, which come with the sound, would take the program's Ctrl+C.
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    if (SDL_InitSubSystem(SDL_INIT_AUDIO) != 0)
        return false;
    SDL_AudioSpec wanted{};
    wanted.freq = frequency;
    wanted.format = OutputFormat;
    wanted.channels = OutputChannels;
    wanted.samples = BufferedSamples;
    wanted.userdata = this;
    wanted.callback = [](void *user, Uint8 *target, int bytes) {
        static_cast<Device *>(user)->m_mix({target, static_cast<std::size_t>(bytes)});
    };
    m_id = SDL_OpenAudioDevice(nullptr, 0, &wanted, nullptr, 0);
    if (m_id == 0) {
        SDL_QuitSubSystem(SDL_INIT_AUDIO);
        return false;
    }
    SDL_PauseAudioDevice(m_id, 0);
    m_closer = std::jthread([this](const std::stop_token &stop) { ShutWhenIdle(stop); });
    return true;
}

void Device::Close()
{
    m_closer = {}; // ends it
    Shut();
}

void Device::Shut()
{
    if (m_id == 0)
        return;
    SDL_CloseAudioDevice(std::exchange(m_id, 0));
    SDL_QuitSubSystem(SDL_INIT_AUDIO);
}

void Device::ShutWhenIdle(const std::stop_token &stop)
{
    std::unique_lock lock(m_mutex);
    while (m_id != 0) {
        m_stopped.wait_for(lock, stop, BetweenLooks, [] { return false; });
        if (stop.stop_requested())
            return;
        const bool wasIdle = std::exchange(m_isIdle, !m_isPlaying());
        if (wasIdle && m_isIdle)
            Shut();
    }
}

} // namespace soundlib
