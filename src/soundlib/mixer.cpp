#include "soundlib/mixer.h"

#include <algorithm>
#include <utility>

namespace soundlib
{

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
    m_device.Close();
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
    if (channel == nullptr || !m_isStarted || !m_device.Open(m_frequency))
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

void Mixer::Mix(std::span<std::uint8_t> target)
{
    std::ranges::fill(target, std::uint8_t(0));
    const std::lock_guard lock(m_mutex);
    for (const auto &[handle, channel] : m_channels)
        channel->Mix(target);
}

bool Mixer::IsPlaying()
{
    const std::lock_guard lock(m_mutex);
    return std::ranges::any_of(m_channels, [](const auto &entry) { return entry.second->IsPlaying(); });
}

} // namespace soundlib
