// Writes frames of a document as picture files.
#pragma once

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

} // namespace wb
