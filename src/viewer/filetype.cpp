#include "viewer/filetype.h"

#include "platform/fileio.h"
#include "platform/nativepath.h"

#include <algorithm>

namespace wb
{

namespace
{

struct Magic {
    std::array<std::uint8_t, 4> bytes;
    FileType type;
};

constexpr Magic Magics[] = {
    {{0xFF, 0xD8, 0xFF, 0xE0}, FileType::Jpg}, {{0xFF, 0xD8, 0xFF, 0xE1}, FileType::Jpg},
    {{0x89, 'P', 'N', 'G'}, FileType::Png},    {{'8', 'B', 'P', 'S'}, FileType::Psd},
    {{'a', 'f', 't', '\0'}, FileType::Aft},    {{'g', 'i', '\0', '\0'}, FileType::Gi},
    {{'g', 'a', 'i', '\0'}, FileType::Gai},    {{0x20, 0x04, 0x21, 0x04}, FileType::Hai},
    {{'R', 'I', 'F', 'F'}, FileType::Sound},   {{'Z', 'L', '0', '1'}, FileType::Zl01},
    {{'Z', 'L', '0', '2'}, FileType::Zl02},    {{'D', 'D', 'S', ' '}, FileType::Dds},
};

FileType TypeOf(const std::array<std::uint8_t, 4> &start)
{
    const auto match = std::ranges::find(Magics, start, &Magic::bytes);
    if (match != std::end(Magics))
        return match->type;
    return start[0] == 'B' && start[1] == 'M' ? FileType::Bmp : FileType::Sound;
}

} // namespace

std::array<std::uint8_t, 4> FirstBytes(const QString &path)
{
    std::array<std::uint8_t, 4> start{};
    InputFile file;
    if (file.Open(ToNativePath(path)) == FileError::None)
        file.ReadAt(0, start);
    return start;
}

FileType DetectFileType(const QString &path)
{
    return TypeOf(FirstBytes(path));
}

FileType DetectBufferType(ByteView bytes)
{
    if (bytes.size() < 4)
        return FileType::None;
    return TypeOf({bytes[0], bytes[1], bytes[2], bytes[3]});
}

QString FilePatterns()
{
    return QStringLiteral(
        "*.GI;*.GAI;*.HAI;*.AFT;*.PKG;*.BMP;*.JPG;*.JPEG;*.JPE;*.PNG;*.PSD;*.MP3;*.WAV;*.DAT;"
        "*.DDS");
}

} // namespace wb
