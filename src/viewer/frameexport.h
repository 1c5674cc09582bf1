// Writes frames of a document as picture files.
#pragma once

#include "common/progress.h"
#include "gfx/frameset.h"
#include "services/abortflag.h"

#include <QString>

#include <cstdint>

namespace wb
{

// The name, without extension, that a frame of the document opened as `path` is saved under: the file's
// title, and in a document of several frames "_" and the frame's number in at least three digits. A negative
// frame stands for the document as a whole.
QString DefaultSaveName(const QString &path, std::int32_t frame, std::int32_t frameCount);

enum class ExportFormat { Png, Jpeg };

// Writes a picture to a path of the program, replacing what is there only when the new file is complete.
// `quality` (0..100, above that 100) is for JPEG.
bool WritePicture(const QString &path, std::int32_t handle, ExportFormat format, std::int32_t quality);

// The file that a frame goes to when all are saved as `path`: C:\x\boom.png gives C:\x\boom_007.png.
QString FramePath(const QString &path, std::int32_t frame, std::int32_t frameCount);

struct ExportOrder {
    QString Path; // what FramePath is given
    ExportFormat Format = ExportFormat::Png;
    std::int32_t Quality = 0;
    QString Caption; // of the progress, in front of "3 / 12"
};

enum class ExportEnd { Done, Aborted, Failed };

struct ExportResult {
    ExportEnd End = ExportEnd::Done;
    std::int32_t Written =
        0; // frames, from the first on: when it failed, the number of the one that could not be
};

// Writes every frame that has a picture to its file, up to the first that can't be written. What is written
// stays. The abort flag is asked before each frame. The caller starts and clears the progress, and keeps the
// document as it is meanwhile.
ExportResult WriteAllPictures(const FrameSet &document, const ExportOrder &order, Progress &progress,
                              const AbortFlag &abort);

} // namespace wb
