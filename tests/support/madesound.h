// Made sounds, and what comes out when they are played.
#pragma once

#include "support/tempfolder.h"

#include <chrono>
#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <sndfile.h>
#include <thread>
#include <vector>

namespace wb
{

inline constexpr int WavFormat = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
inline constexpr int Mp3Format = SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III;

// The file of these samples, 16-bit or floats, in a format of libsndfile.
template <typename Sample>
std::string MakeSound(int format, int rate, int channels, const std::vector<Sample> &samples)
{
    constexpr auto write = [] {
        if constexpr (std::is_same_v<Sample, float>)
            return sf_write_float;
        else
            return sf_write_short;
    }();
    const TempFolder folder;
    SF_INFO info{0, rate, channels, format, 0, 0};
    SNDFILE *file = sf_open(folder.Native("sound").c_str(), SFM_WRITE, &info);
    EXPECT_EQ(std::ssize(samples), write(file, samples.data(), std::ssize(samples)));
    sf_close(file);
    return folder.Get("sound");
}

// A tone of 440 Hz at half of full scale.
inline std::string MakeTone(int format, int rate, int channels, double seconds)
{
    std::vector<float> samples;
    for (int i = 0; i < int(rate * seconds); ++i)
        samples.insert(samples.end(), std::size_t(channels), 0.5F * float(std::sin(880 * M_PI * i / rate)));
    return MakeSound(format, rate, channels, samples);
}

// Sends what is played into a file, at its own pace or many times as fast.
class DiskOutput
{
public:
    explicit DiskOutput(bool isPaced)
    {
        ::setenv("SDL_AUDIODRIVER", "disk", 1);
        ::setenv("SDL_DISKAUDIOFILE", m_folder.Native("played").c_str(), 1);
        if (!isPaced)
            ::setenv("SDL_DISKAUDIODELAY", "1", 1); // ms for each 1024 samples
    }
    ~DiskOutput() { ::unsetenv("SDL_DISKAUDIODELAY"); }

    // From the first sample that is heard to the last, in stereo. The output must be closed.
    std::vector<float> Heard() const
    {
        const std::string bytes = m_folder.Get("played");
        std::vector<float> samples(bytes.size() / sizeof(float));
        std::memcpy(samples.data(), bytes.data(), samples.size() * sizeof(float));
        const auto isHeard = [](float sample) { return sample != 0; };
        const auto end = std::find_if(samples.rbegin(), samples.rend(), isHeard).base();
        return {std::find_if(samples.begin(), end, isHeard), end};
    }

    // Whether the output gets closed within some seconds.
    bool IsLetGo() const
    {
        for (int waited = 0; waited < 50; ++waited) {
            const std::uintmax_t size = std::filesystem::file_size(m_folder.Native("played"));
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
            if (std::filesystem::file_size(m_folder.Native("played")) == size)
                return true;
        }
        return false;
    }

private:
    TempFolder m_folder;
};

} // namespace wb
