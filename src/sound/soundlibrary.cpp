#include "sound/soundlibrary.h"

namespace wb
{

namespace
{

LoadedLibrary<SoundLibrary> &TheLibrary()
{
    static LoadedLibrary<SoundLibrary> library;
    return library;
}

} // namespace

bool LoadSoundLibrary(const QString &folder)
{
    return TheLibrary().Load(folder, SoundLibraryFile);
}

void UnloadSoundLibrary()
{
    TheLibrary().Unload();
}

bool IsSoundLibraryLoaded()
{
    return TheLibrary().IsLoaded();
}

const SoundLibrary &SoundFunctions()
{
    return TheLibrary().Functions();
}

} // namespace wb
