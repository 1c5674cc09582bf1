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

    // For what may be asked of a channel while it is mixed; null for a handle that names nothing.
    Channel *Find(std::int32_t handle) const;

private:
    bool OpenDevice();
    void CloseDevice();
    void Mix(std::span<std::uint8_t> target);

    // The device's thread mixes under the mutex, and only the caller's thread changes the map, under it as
    // well. No call to the device is made under it, because the device waits for its thread.
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
