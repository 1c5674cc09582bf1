// The one door to Sound.dll: every symbol of it that the programs use is resolved here.
#pragma once

#include "common/loadedlibrary.h"
#include "soundlib/soundlib.h"

#include <QString>

namespace wb
{

struct SoundLibrary {
    WB_LIBRARY_TABLE(SOUNDLIB_FUNCTIONS)
};

inline constexpr char SoundLibraryFile[] = "Sound.dll";

// Loads the library from `folder` (a native path) and resolves its functions. False when the file is missing,
// is no library or lacks a function; the table is then as it was.
bool LoadSoundLibrary(const QString &folder);

// Frees the library. Every stream must have been freed before.
void UnloadSoundLibrary();

bool IsSoundLibraryLoaded();

// The loaded functions. Only valid while it is loaded.
const SoundLibrary &SoundFunctions();

} // namespace wb
