#include "gfx/graphicslibrary.h"

namespace wb
{

namespace
{

LoadedLibrary<GraphicsLibrary> &TheLibrary()
{
    static LoadedLibrary<GraphicsLibrary> library;
    return library;
}

} // namespace

bool LoadGraphicsLibrary(const QString &folder)
{
    return TheLibrary().Load(folder, GraphicsLibraryFile);
}

void UnloadGraphicsLibrary()
{
    TheLibrary().Unload();
}

const GraphicsLibrary &Graphics()
{
    return TheLibrary().Functions();
}

} // namespace wb
