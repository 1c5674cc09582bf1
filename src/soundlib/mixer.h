// The streams, mixed for the device.
#pragma once

#include "soundlib/channel.h"
#include "soundlib/device.h"

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
    void Mix(std::span<std::uint8_t> target);
    bool IsPlaying();

    // The device's thread mixes under the mutex, and only the caller's thread changes the map, under it as
    // well. No call to the device is made under it, because the device waits for its thread.
    std::mutex m_mutex;
    std::map<std::int32_t, std::unique_ptr<Channel>> m_channels;
    std::int32_t m_lastHandle = 0;

    static constexpr int DefaultFrequency = 44'100;

    int m_frequency = DefaultFrequency;
    bool m_isInitialised = false;
    bool m_isStarted = false;
    Device m_device{[this](std::span<std::uint8_t> target) { Mix(target); }, [this] { return IsPlaying(); }};
};

} // namespace soundlib
