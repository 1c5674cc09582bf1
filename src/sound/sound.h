// Sounds: what the programs ask of the sound library. A handle names a stream that it holds; 0 is none.
#pragma once

#include "common/bytearray.h"

#include <QString>

#include <cstdint>

namespace wb
{

// Before the first sound is played, and after the last one. `window` is the main window's number.
void SoundStartup(std::int32_t window);
void SoundShutdown();

// A new stream, for the caller to free; 0 for what is no sound, and when the library is not loaded. The bytes
// must stay where and as they are while the stream lives.
std::int32_t OpenSoundFile(const QString &path);
std::int32_t OpenSoundBuffer(ByteView bytes);

void FreeSound(std::int32_t handle);

// In Hz; 0 for no stream.
std::int32_t SoundFrequency(std::int32_t handle);

// 0 to 100; other values change nothing.
void SetSoundVolume(std::int32_t handle, std::int32_t volume);

void PlaySound(std::int32_t handle);
void StopSound(std::int32_t handle);

// False also once it has come to its end.
bool IsSoundPlaying(std::int32_t handle);

} // namespace wb
