#include "sound/sound.h"

#include "sound/soundlibrary.h"
#include "support/madesound.h"
#include "support/table.h"

#include <chrono>
#include <random>
#include <thread>

namespace wb
{

namespace
{

using namespace std::chrono_literals;

void PlayToEnd(std::int32_t handle)
{
    PlaySound(handle);
    for (int i = 0; i < 10'000 && IsSoundPlaying(handle); ++i)
        std::this_thread::sleep_for(1ms);
    EXPECT_FALSE(IsSoundPlaying(handle));
}

// Noise without a silent sample.
std::vector<std::int16_t> NoiseSamples(std::size_t count)
{
    std::mt19937 random(20240301);
    std::vector<std::int16_t> samples(count);
    std::ranges::generate(samples, [&random] { return std::int16_t(random() | 1); });
    return samples;
}

bool Begins(const std::vector<float> &played, const std::vector<std::int16_t> &samples, float volume)
{
    return played.size() >= samples.size() &&
           std::equal(samples.begin(), samples.end(), played.begin(),
                      [=](float sample, float heard) { return sample / 32768 * volume == heard; });
}

} // namespace

TEST(Sound, PlaysEverySampleFromFileAndMemoryAsLoudAsAskedAndBeginsAnewAfterItsEnd)
{
    const auto noise = NoiseSamples(10'002);
    const std::string bytes = MakeSound(WavFormat, 44100, 2, noise);
    const TempFolder folder;
    folder.Put("звук", bytes);
    for (const int volume : {100, 50, 0, 101, -1})
        for (const bool isFile : {false, true}) {
            const DiskOutput output(false);
            SoundStartup(0);
            const std::int32_t handle =
                isFile ? OpenSoundFile(folder.Path(u"звук"_qs)) : OpenSoundBuffer(BytesOf(bytes));
            SetSoundVolume(handle, volume);
            EXPECT_FALSE(IsSoundPlaying(handle));
            PlayToEnd(handle);
            PlayToEnd(handle);
            SoundShutdown();
            std::vector<float> heard = output.Heard();
            if (volume == 0) {
                EXPECT_TRUE(heard.empty());
                continue;
            }
            const float factor = volume == 50 ? 0.5F : 1;
            EXPECT_TRUE(Begins(heard, noise, factor)) << volume;
            heard.erase(heard.begin(), std::find_if(heard.begin() + std::ssize(noise), heard.end(),
                                                    [](float sample) { return sample != 0; }));
            EXPECT_TRUE(heard.size() == noise.size() && Begins(heard, noise, factor)) << volume;
        }
}

TEST(Sound, GoesOnWhereItWasStoppedOrFromTheBeginning)
{
    const auto noise = NoiseSamples(400'000);
    const std::string bytes = MakeSound(WavFormat, 44100, 2, noise);
    for (const std::int32_t restart : {0, 1}) {
        const DiskOutput output(false);
        SoundStartup(0);
        const std::int32_t handle = OpenSoundBuffer(BytesOf(bytes));
        PlaySound(handle);
        std::this_thread::sleep_for(20ms);
        StopSound(handle);
        EXPECT_FALSE(IsSoundPlaying(handle));
        std::this_thread::sleep_for(20ms);
        EXPECT_EQ(1, SoundFunctions().VTMP_ChannelPlay(handle, restart));
        PlayToEnd(handle);
        SoundShutdown();
        std::vector<float> heard = output.Heard();
        const auto gap = std::ranges::find(heard, 0.0F);
        ASSERT_LT(gap - heard.begin(), std::ssize(noise));
        const auto next = std::find_if(gap, heard.end(), [](float sample) { return sample != 0; });
        heard.erase(restart != 0 ? heard.begin() : gap, next);
        EXPECT_TRUE(heard.size() == noise.size() && Begins(heard, noise, 1)) << restart;
    }
}

TEST(Sound, LetsTheDeviceGoAfterTheEndAndTakesItAnew)
{
    const auto noise = NoiseSamples(30'000);
    const std::string bytes = MakeSound(WavFormat, 44100, 2, noise);
    const DiskOutput output(true);
    SoundStartup(0);
    const std::int32_t handle = OpenSoundBuffer(BytesOf(bytes));
    for (int round = 0; round < 2; ++round) {
        PlayToEnd(handle);
        EXPECT_TRUE(output.IsLetGo());
        const std::vector<float> heard = output.Heard();
        EXPECT_TRUE(heard.size() == noise.size() && Begins(heard, noise, 1)) << round;
    }
    SoundShutdown();
}

TEST(Sound, ConvertsEveryRateAndRefusesOtherKinds)
{
    const TempFolder folder;
    for (const TableRow &row : ReadTable("sound/kinds.txt", 4)) {
        const int rate = row.Int(1);
        folder.Put("tone", MakeTone(std::stoi(row.Bytes(0), nullptr, 16), rate, row.Int(2), 0.5));
        const DiskOutput output(false);
        SoundStartup(0);
        const std::int32_t handle = OpenSoundFile(folder.Path(u"tone"_qs));
        EXPECT_EQ(handle != 0, OpenSoundBuffer(BytesOf(folder.Get("tone"))) != 0) << row.line;
        EXPECT_EQ(row.Int(3) != 0 ? rate : 0, SoundFrequency(handle)) << row.line;
        PlayToEnd(handle);
        SoundShutdown();
        if (handle == 0)
            continue;
        // The middle of the tone has its loudness and crosses zero as often as it should.
        const std::vector<float> heard = output.Heard();
        ASSERT_NEAR(44100, double(heard.size()), 400) << row.line;
        int crossings = 0;
        for (std::size_t i = 8820; i < 35280; i += 2)
            crossings += (heard[i] < 0) != (heard[i + 2] < 0) ? 1 : 0;
        EXPECT_NEAR(440 * 2 * 0.3, crossings, 2) << row.line;
        const float loudest = *std::max_element(heard.begin() + 8820, heard.begin() + 35280);
        EXPECT_NEAR(0.5, loudest, row.Int(2) == 6 ? 0.5 : 0.05) << row.line;
    }
    folder.MakePipe("pipe");
    EXPECT_EQ(0, OpenSoundFile(folder.Path(u"pipe"_qs)));
    EXPECT_EQ(0, OpenSoundFile(folder.Path(u"missing"_qs)));
    EXPECT_EQ(0, OpenSoundBuffer({}));
}

TEST(Sound, SurvivesTruncatedAndChangedFilesAndBeingFreedWhilePlaying)
{
    std::mt19937 random(20240302);
    const DiskOutput output(false);
    SoundStartup(0);
    int opened = 0;
    const auto play = [&](std::string_view bytes) {
        const ByteArray exact(bytes.begin(), bytes.end());
        const std::int32_t handle = OpenSoundBuffer(exact);
        opened += handle != 0 ? 1 : 0;
        PlaySound(handle);
        if (random() % 8 == 0)
            PlayToEnd(handle);
        FreeSound(handle);
    };
    for (const int format : {WavFormat, Mp3Format}) {
        const std::string whole = MakeTone(format, 22050, 1, 0.1);
        for (std::size_t length = 0; length < whole.size(); length += length < 200 ? 1 : 97)
            play(std::string_view(whole).substr(0, length));
        for (std::size_t round = 0; round < 150; ++round) {
            std::string damaged = whole;
            for (std::size_t change = 0; change < 1 + round % 4; ++change)
                damaged[random() % (round % 2 == 0 ? 60 : whole.size())] = static_cast<char>(random());
            play(damaged);
        }
    }
    SoundShutdown();
    EXPECT_GT(opened, 150) << "so many that the decoders behind the headers were reached";
}

} // namespace wb
