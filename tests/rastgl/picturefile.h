// Reading and damaging picture files in the tests of the readers.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace picturefile
{

using File = std::vector<std::uint8_t>;
using Numbers = std::vector<std::uint32_t>;
using Reader = std::int32_t (*)(const std::uint8_t *, const std::int32_t *);

// A picture as the tests look at it: 0xAARRGGBB, top row first.
struct Seen {
    int width = 0;
    int height = 0;
    int bitsPerPixel = 0;
    Numbers pixels;

    bool operator==(const Seen &) const = default;
};

// A line of a file in tests/rastgl/pictures, whose head says how lines are written.
struct Case {
    std::string name;
    File file;
    Seen seen;
};
std::vector<Case> LoadCases(const char *fileName);

// What the handle names, which is then freed; an empty picture for 0.
Seen Take(std::int32_t handle);
Seen Read(Reader reader, const File &file);

// Whether no channel of a pixel differs by more than that.
bool AreClose(std::uint32_t one, std::uint32_t other, int most);

// A handle of these pixels.
std::int32_t Hold(int width, int height, const Numbers &topDown);

// Reads the file cut off at every length: nothing at first, then pictures of the full size in which ever more
// pixels are right.
void ExpectReadsAsFarAsItGoes(Reader reader, const File &file);

// Reads the file with random bytes changed, and cut off at every length: the reader must come back, with a
// picture of possible size or none. `repair` makes the checksums of every other changed file right again.
void ExpectSurvivesDamage(Reader reader, const File &file, void (*repair)(File &) = nullptr);

} // namespace picturefile
