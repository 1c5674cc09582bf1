// Opens any supported file as a document.
#pragma once

#include "common/bytearray.h"
#include "common/progress.h"
#include "gfx/frameset.h"
#include "services/abortflag.h"

#include <QString>

#include <optional>

namespace wb
{

// All but the colour is for animations, whose frames are read one by one.
struct LoadOptions {
    std::int32_t AftColor = 0;                        // what fonts are drawn in, as the setting of that name
    bool AltGaiMethod = false;                        // as the setting of that name
    Progress *Bar = nullptr;                          // what has one lets events run while it reads
    AbortFlag *Abort = nullptr;                       // ends reading early; the document has what was read
    std::optional<QString> Background = std::nullopt; // the GI to draw an animation over; empty: none
};

// Opens a file by its first bytes. What no reader can read gives an empty document, and so does what takes
// more memory than there is. Where the options name no background it is the GI file beside an animation, of
// the same title, when there is one.
FrameSet OpenDocumentFile(const QString &path, const LoadOptions &options = {});

// The same for bytes in memory, such as an entry of an archive. They have no file beside them. The document
// of a sound keeps them.
FrameSet OpenDocumentBuffer(ByteArray bytes, const LoadOptions &options = {});

} // namespace wb
