// Recognises a file by its first bytes.
#pragma once

#include "common/bytearray.h"

#include <QString>

#include <array>

namespace wb
{

enum class FileType : int {
    None = -1, // too short for any reader
    Bmp = 0,
    Jpg = 1,
    Png = 2,
    Psd = 3,
    Aft = 4,
    Gi = 5,
    Gai = 6,
    Hai = 7,
    Sound = 8, // "RIFF", and whatever nothing else claims
    Zl01 = 9,
    Zl02 = 10,
    Dds = 11,
};

// What a file is told by; bytes that it lacks are zero.
std::array<std::uint8_t, 4> FirstBytes(const QString &path);

// The type of the file.
FileType DetectFileType(const QString &path);

// The type of bytes in memory; fewer than four give None.
FileType DetectBufferType(ByteView bytes);

// What the folder list shows, in this order, as its list of patterns ("*.GI;*.GAI;...").
QString FilePatterns();

} // namespace wb
