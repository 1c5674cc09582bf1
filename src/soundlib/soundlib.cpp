#include "soundlib/soundlib.h"

#include "soundlib/mixer.h"

#include <exception>

namespace
{

using namespace soundlib;

constexpr std::int32_t DefaultDevice = -1;
constexpr std::int32_t SameFrequency = -1;
constexpr std::int32_t SamePan = -101;

Mixer &TheMixer()
{
    static Mixer mixer;
    return mixer;
}

void Tell(std::int32_t *place, std::int32_t value)
{
    if (place != nullptr)
        *place = value;
}

// 0 where there is no memory, or no thread to be had.
template <typename Work>
std::int32_t OrNothing(Work work)
{
    try {
        return work();
    } catch (const std::exception &) {
        return 0;
    }
}

} // namespace

int32_t VTMP_Init(int32_t device, int32_t frequency, int32_t, int32_t, int32_t)
{
    const bool isRate =
        frequency == 0 || (frequency >= SoundFile::LowestRate && frequency <= SoundFile::HighestRate);
    return device == DefaultDevice && isRate && TheMixer().Init(frequency) ? 1 : 0;
}

int32_t VTMP_Start()
{
    return TheMixer().Start() ? 1 : 0;
}

int32_t VTMP_Stop()
{
    TheMixer().Stop();
    return 1;
}

void VTMP_Free()
{
    TheMixer().Free();
}

int32_t VTMP_StreamCreateFile(int32_t fromMemory, const void *source, int32_t offset, int32_t length, int32_t)
{
    if (source == nullptr || offset < 0 || length < 0)
        return 0;
    const auto *text = static_cast<const char *>(source);
    return OrNothing([=] {
        SoundSource bytes = fromMemory != 0 ? SoundSource::OfMemory(text + offset, length)
                                            : SoundSource::OfFile(text, offset, length);
        return TheMixer().Add(SoundFile::Open(std::move(bytes)));
    });
}

void VTMP_StreamFree(int32_t handle)
{
    TheMixer().Remove(handle);
}

int32_t VTMP_ChannelPlay(int32_t handle, int32_t restart)
{
    return OrNothing([=] { return TheMixer().Play(handle, restart != 0) ? 1 : 0; });
}

int32_t VTMP_ChannelStop(int32_t handle)
{
    Channel *channel = TheMixer().Find(handle);
    if (channel == nullptr)
        return 0;
    channel->Stop();
    return 1;
}

int32_t VTMP_ChannelIsActive(int32_t handle)
{
    const Channel *channel = TheMixer().Find(handle);
    return channel != nullptr && channel->IsPlaying() ? 1 : 0;
}

int32_t VTMP_ChannelSetAttributes(int32_t handle, int32_t frequency, int32_t volume, int32_t pan)
{
    Channel *channel = TheMixer().Find(handle);
    if (channel == nullptr || frequency != SameFrequency || pan != SamePan)
        return 0;
    if (volume >= 0 && volume <= FullVolume)
        channel->SetVolume(volume);
    return 1;
}

int32_t VTMP_ChannelGetAttributes(int32_t handle, int32_t *frequency, int32_t *volume, int32_t *pan)
{
    const Channel *channel = TheMixer().Find(handle);
    if (channel == nullptr)
        return 0;
    Tell(frequency, channel->Rate());
    Tell(volume, channel->Volume());
    Tell(pan, 0);
    return 1;
}
