// The streams, and the device that plays them.
#pragma once

#include "soundlib/channel.h"

#include <map>
#include <mutex>

namespace soundlib
{

class Mixer
{
public:
    ~Mixer() { Free(); }

    bool Init(int frequency);
    bool Start();
    void Stop();
    void Free();

    std::int32_t Add(std::unique_ptr<SoundFile> sound);
    void Remove(std::int32_t handle);

    bool Play(std::int32_t handle, bool restart);

    // Calls use(channel) while nothing is mixed; false for a handle that names nothing.
    template <typename Use>
    bool With(std::int32_t handle, Use use)
    {
        const std::lock_guard lock(m_mutex);
        const auto channel = m_channels.find(handle);
        if (channel == m_channels.end())
            return false;
        use(*channel->second);
        return true;
    }

private:
    bool OpenDevice();
    void CloseDevice();
    void Mix(std::span<std::uint8_t> target);

    // The device's thread mixes under the mutex. No call to the device is made under it, because the device
    // waits for its thread.
    std::mutex m_mutex;
    std::map<std::int32_t, std::unique_ptr<Channel>> m_channels;
    std::int32_t m_lastHandle = 0;

    static constexpr int DefaultFrequency = 44'100;

    int m_frequency = DefaultFrequency;
    bool m_isInitialised = false;
    bool m_isStarted = false;
    SDL_AudioDeviceID m_device = 0;
};

} // namespace soundlib
