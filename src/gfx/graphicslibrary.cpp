#include "gfx/graphicslibrary.h"

#include <QFileInfo>
#include <QLibrary>

namespace wb
{

namespace
{

struct Loaded {
    QLibrary module;
    GraphicsLibrary functions;
};

Loaded &TheLibrary()
{
    static Loaded loaded;
    return loaded;
}

template <typename Function>
bool Resolve(QLibrary &module, const char *name, Function &function)
{
    function = reinterpret_cast<Function>(module.resolve(name));
    return function != nullptr;
}

} // namespace

bool LoadGraphicsLibrary(const QString &folder)
{
    // The exact file is named and looked for first: a library of that name elsewhere on the search path is
    // not ours.
    const QString path = folder + QLatin1Char('/') + QLatin1String(GraphicsLibraryFile);
    if (!QFileInfo::exists(path))
        return false;

    Loaded &loaded = TheLibrary();
    loaded.module.setFileName(path);
    if (!loaded.module.load())
        return false;

    GraphicsLibrary functions;
    bool complete = true;
#define WB_RESOLVE(name) complete = complete && Resolve(loaded.module, #name, functions.name);
    RASTGL_FUNCTIONS(WB_RESOLVE)
#undef WB_RESOLVE
    if (!complete) {
        loaded.module.unload();
        return false;
    }
    loaded.functions = functions;
    return true;
}

void UnloadGraphicsLibrary()
{
    Loaded &loaded = TheLibrary();
    loaded.functions = {};
    if (loaded.module.isLoaded())
        loaded.module.unload();
}

const GraphicsLibrary &Graphics()
{
    return TheLibrary().functions;
}

} // namespace wb
