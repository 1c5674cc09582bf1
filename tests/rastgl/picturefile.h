// Making, reading and damaging picture files in the tests of the readers.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace picturefile
{

using File = std::vector<std::uint8_t>;
using Reader = std::int32_t (*)(const std::uint8_t *, const std::int32_t *);

// Builds a file number by number.
struct Maker {
    File bytes;

    Maker &Little(int size, std::uint32_t value);
    Maker &Big(int size, std::uint32_t value);
    Maker &Text(std::string_view text);
    Maker &Raw(const File &more);
    Maker &Zeros(std::size_t count);
};

// A picture as the tests look at it: 0xAARRGGBB, top row first.
struct Seen {
    int width = 0;
    int height = 0;
    int bitsPerPixel = 0;
    std::vector<std::uint32_t> pixels;

    bool operator==(const Seen &) const = default;
};

// What the handle names, which is then freed; an empty picture for 0.
Seen Take(std::int32_t handle);
Seen Read(Reader reader, const File &file);

// A handle of these pixels.
std::int32_t Hold(int width, int height, const std::vector<std::uint32_t> &topDown);

// Reads the file cut off at every length: nothing at first, then pictures of the full size in which ever more
// pixels are right.
void ExpectReadsAsFarAsItGoes(Reader reader, const File &file);

// Reads the file with random bytes changed, and cut off at every length: the reader must come back, with a
// picture of possible size or none. `repair` makes a changed file's checksums right again.
void ExpectSurvivesDamage(Reader reader, const File &file, void (*repair)(File &) = nullptr);

} // namespace picturefile
