#include "sound/sound.h"

#include "platform/nativepath.h"
#include "sound/soundlibrary.h"

#include <limits>

namespace wb
{

namespace
{

constexpr std::int32_t DefaultDevice = -1;
constexpr std::int32_t OutputFrequency = 44100;
constexpr std::int32_t SameFrequency = -1;
constexpr std::int32_t SamePan = -101;
constexpr std::int32_t FromFile = 0;
constexpr std::int32_t FromMemory = 1;

} // namespace

void SoundStartup(std::int32_t window)
{
    SoundFunctions().VTMP_Init(DefaultDevice, OutputFrequency, 0, window, 0);
    SoundFunctions().VTMP_Start();
}

void SoundShutdown()
{
    SoundFunctions().VTMP_Stop();
    SoundFunctions().VTMP_Free();
}

std::int32_t OpenSoundFile(const QString &path)
{
    if (!IsSoundLibraryLoaded())
        return 0;
    return SoundFunctions().VTMP_StreamCreateFile(FromFile, ToNativePath(path).c_str(), 0, 0, 0);
}

std::int32_t OpenSoundBuffer(ByteView bytes)
{
    if (!IsSoundLibraryLoaded() || bytes.empty() || bytes.size() > std::numeric_limits<std::int32_t>::max())
        return 0;
    return SoundFunctions().VTMP_StreamCreateFile(FromMemory, bytes.data(), 0,
                                                  static_cast<std::int32_t>(bytes.size()), 0);
}

void FreeSound(std::int32_t handle)
{
    if (handle != 0)
        SoundFunctions().VTMP_StreamFree(handle);
}

std::int32_t SoundFrequency(std::int32_t handle)
{
    std::int32_t frequency = 0;
    std::int32_t volume = 0;
    std::int32_t pan = 0;
    SoundFunctions().VTMP_ChannelGetAttributes(handle, &frequency, &volume, &pan);
    return frequency;
}

void SetSoundVolume(std::int32_t handle, std::int32_t volume)
{
    if (volume >= 0 && volume <= 100)
        SoundFunctions().VTMP_ChannelSetAttributes(handle, SameFrequency, volume, SamePan);
}

void PlaySound(std::int32_t handle)
{
    SoundFunctions().VTMP_ChannelPlay(handle, 0);
}

void StopSound(std::int32_t handle)
{
    SoundFunctions().VTMP_ChannelStop(handle);
}

bool IsSoundPlaying(std::int32_t handle)
{
    return SoundFunctions().VTMP_ChannelIsActive(handle) != 0;
}

} // namespace wb
