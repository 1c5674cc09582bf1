// Sound.dll: the sound library of the workbench, as plain C functions.
//
// Conventions that hold for every function:
//  - A stream handle is a positive 32-bit number that names a sound held by the library; 0 is no stream.
//    Whoever makes a handle frees it with VTMP_StreamFree. A handle that names nothing gives 0 or does
//    nothing.
//  - A stream is played on the one channel that it is: both have the same handle.
//  - Functions that tell success give 1, else 0.
//  - Calls must not overlap. The thread that mixes what sounds is the library's own and is kept apart from
//    them: any call may be made while something plays.
//  - Streams need no output: they are made and asked about before VTMP_Init and on a machine without a sound
//    device. Playing there is refused by VTMP_ChannelPlay.
//  - Sizes must describe memory truly: the library trusts its caller, but never a file.
//  - Paths are in the encoding that the machine's own fopen takes.
//  - No function throws: what lacks memory gives 0.
#pragma once

#include <stdint.h>

#ifdef _WIN32
#define SOUNDLIB_API extern "C" __declspec(dllexport)
#else
#define SOUNDLIB_API extern "C" __attribute__((visibility("default")))
#endif

// --- Output

// Says how sounds are to be put out: on the default device (-1, the only one that can be asked for), mixed to
// stereo at `frequency` Hz (0: 44100). Flags, the window and the last argument have no meaning here. 0 when
// it was called before and not freed since, or with what the library has not.
SOUNDLIB_API int32_t VTMP_Init(int32_t device, int32_t frequency, int32_t flags, int32_t window,
                               int32_t reserved);

// From VTMP_Start on channels can be played; the device is opened when one is, and closed soon after
// nothing plays any more. VTMP_Stop stops all of them and closes the device at once.
SOUNDLIB_API int32_t VTMP_Start(void);
SOUNDLIB_API int32_t VTMP_Stop(void);

// Stops output and frees every stream.
SOUNDLIB_API void VTMP_Free(void);

// --- Streams

// A new stream over a WAV or MP3 file; 0 for everything else, for a file without a sample and for one of more
// than 8 channels or a rate outside 1,000 to 384,000 Hz. A file that breaks off plays as far as it goes.
//   fromMemory 0: `source` is the path of a regular file, which stays open while the stream lives.
//   fromMemory 1: `source` is the address of the file's bytes, which are read where they lie and must stay
//                 as they are while the stream lives; `length` tells their number.
// The sound begins at byte `offset` and takes `length` bytes; for a file length 0 means all that follow.
// Flags have no meaning.
SOUNDLIB_API int32_t VTMP_StreamCreateFile(int32_t fromMemory, const void *source, int32_t offset,
                                           int32_t length, int32_t flags);

// A stream that plays is stopped first.
SOUNDLIB_API void VTMP_StreamFree(int32_t handle);

// --- Channels

// Plays on from where the channel was stopped, or with `restart` not 0 from the beginning. A channel that was
// played to its end begins anew either way. 0 when there is no device to play on.
SOUNDLIB_API int32_t VTMP_ChannelPlay(int32_t handle, int32_t restart);
SOUNDLIB_API int32_t VTMP_ChannelStop(int32_t handle);

// 1 while the channel plays; 0 once it was stopped or has come to its end.
SOUNDLIB_API int32_t VTMP_ChannelIsActive(int32_t handle);

// Volume 0 to 100 (full, which a new stream has), at once also for what plays. Values outside leave it
// unchanged, as -1 does. Frequency and pan can't be changed: -1 and -101 leave them unchanged, and any other
// value makes the call do nothing but give 0.
SOUNDLIB_API int32_t VTMP_ChannelSetAttributes(int32_t handle, int32_t frequency, int32_t volume,
                                               int32_t pan);

// The sound's own rate in Hz, the volume, and the pan, which is 0. Each may be null. Nothing is written for a
// handle that names nothing.
SOUNDLIB_API int32_t VTMP_ChannelGetAttributes(int32_t handle, int32_t *frequency, int32_t *volume,
                                               int32_t *pan);

// X(name) for every function, for tables of them.
#define SOUNDLIB_FUNCTIONS(X)                                                                                \
    X(VTMP_Init)                                                                                             \
    X(VTMP_Start)                                                                                            \
    X(VTMP_Stop)                                                                                             \
    X(VTMP_Free)                                                                                             \
    X(VTMP_StreamCreateFile)                                                                                 \
    X(VTMP_StreamFree)                                                                                       \
    X(VTMP_ChannelPlay)                                                                                      \
    X(VTMP_ChannelStop)                                                                                      \
    X(VTMP_ChannelIsActive)                                                                                  \
    X(VTMP_ChannelSetAttributes)                                                                             \
    X(VTMP_ChannelGetAttributes)
