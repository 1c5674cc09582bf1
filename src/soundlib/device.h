// The sound device, open only while something plays.
#pragma once

#include <SDL2/SDL_audio.h>

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <span>
#include <stop_token>
#include <thread>

namespace soundlib
{

// Its functions are called by one thread.
class Device
{
public:
    // `mix` fills its bytes with what sounds next, on a thread of the device's own; `isPlaying` is asked on
    // another.
    Device(std::function<void(std::span<std::uint8_t>)> mix, std::function<bool()> isPlaying);
    ~Device() { Close(); }
    Device(const Device &) = delete;
    Device &operator=(const Device &) = delete;

    // Sees to it that the device runs; false when there is none. It closes a second or two after nothing
    // plays any more: what was mixed last must still be heard, and a pause would only make it put out
    // silence.
    bool Open(int frequency);
    void Close();

private:
    bool IsOpen();
    bool Start(int frequency);
    void Shut();
    void ShutWhenIdle(const std::stop_token &stop);

    const std::function<void(std::span<std::uint8_t>)> m_mix;
    const std::function<bool()> m_isPlaying;

    std::mutex m_mutex; // over what follows, while m_closer runs
    std::condition_variable_any m_stopped;
    SDL_AudioDeviceID m_id = 0; // 0: closed
    bool m_isIdle = false;      // when last looked at, and not opened since
    std::jthread m_closer;
};

} // namespace soundlib
