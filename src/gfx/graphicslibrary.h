// The one door to RastGL.dll: every symbol of it that the programs use is resolved here.
#pragma once

#include "common/loadedlibrary.h"
#include "rastgl/rastgl.h"

#include <QString>

namespace wb
{

struct GraphicsLibrary {
    WB_LIBRARY_TABLE(RASTGL_FUNCTIONS)
};

inline constexpr char GraphicsLibraryFile[] = "RastGL.dll";

// Loads the library from `folder` (a native path) and resolves its functions. False when the file is missing,
// is no library or lacks a function; the table is then as it was.
bool LoadGraphicsLibrary(const QString &folder);

// Frees the library. Every picture handle must have been freed before.
void UnloadGraphicsLibrary();

// The loaded functions. Only valid between the two calls above.
const GraphicsLibrary &Graphics();

} // namespace wb
