#include "rastgl/picturefile.h"

#include "rastgl/rastgl.h"

#include <cstdlib>
#include <fstream>
#include <random>
#include <sstream>

#include <gtest/gtest.h>

namespace picturefile
{

namespace
{

File FirstBytes(const File &file, std::size_t count)
{
    return {file.begin(), file.begin() + std::ptrdiff_t(count)};
}

File ToFile(const std::string &text)
{
    File file;
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        if (word[0] == '\'') {
            file.insert(file.end(), word.begin() + 1, word.end() - 1);
            continue;
        }
        const std::size_t star = std::min(word.find('*'), word.size());
        const int repeats = star < word.size() ? std::stoi(word.substr(star + 1)) : 1;
        for (int repeat = 0; repeat < repeats; ++repeat)
            for (std::size_t at = 0; at + 2 <= star; at += 2)
                file.push_back(std::uint8_t(std::stoi(word.substr(at, 2), nullptr, 16)));
    }
    return file;
}

} // namespace

std::vector<Case> LoadCases(const char *fileName)
{
    std::vector<Case> cases;
    std::ifstream file(std::string(PICTURES_FOLDER) + '/' + fileName);
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with('#'))
            continue;
        const std::size_t colon = line.find(": ");
        const std::size_t arrow = line.find("->");
        Case &made = cases.emplace_back();
        made.name = line.substr(0, colon);
        made.file = ToFile(line.substr(colon + 1, arrow - colon - 1));
        std::istringstream seen(line.substr(arrow + 2));
        seen >> made.seen.width >> made.seen.height >> made.seen.bitsPerPixel >> std::hex;
        for (std::uint32_t pixel = 0; seen >> pixel;)
            made.seen.pixels.push_back(pixel);
    }
    EXPECT_FALSE(cases.empty()) << fileName;
    return cases;
}

Seen Take(std::int32_t handle)
{
    Seen seen{VTGF_DIB_GetWidth(handle), VTGF_DIB_GetHeight(handle), VTGF_DIB_GetBPP(handle), {}};
    Numbers bottomUp(std::size_t(seen.width) * std::size_t(seen.height));
    const auto byteCount = std::int32_t(bottomUp.size() * 4);
    VTGF_DIB_CopyBuf(reinterpret_cast<std::uint8_t *>(bottomUp.data()), &byteCount, handle);
    for (auto row = bottomUp.end(); row != bottomUp.begin(); row -= seen.width)
        seen.pixels.insert(seen.pixels.end(), row - seen.width, row);
    VTGF_DIB_Free(handle);
    return seen;
}

Seen Read(Reader reader, const File &file)
{
    const auto length = std::int32_t(file.size());
    return Take(reader(file.data(), &length));
}

bool AreClose(std::uint32_t one, std::uint32_t other, int most)
{
    bool close = true;
    for (int shift = 0; shift < 32; shift += 8)
        close = close && std::abs(int(one >> shift & 0xFF) - int(other >> shift & 0xFF)) <= most;
    return close;
}

std::int32_t Hold(int width, int height, const Numbers &topDown)
{
    Numbers bottomUp;
    for (auto row = topDown.end(); row != topDown.begin(); row -= width)
        bottomUp.insert(bottomUp.end(), row - width, row);
    const std::int32_t bits = 32;
    return VTGF_Read_Buf(reinterpret_cast<const std::uint8_t *>(bottomUp.data()), &width, &height, &bits);
}

void ExpectReadsAsFarAsItGoes(Reader reader, const File &file)
{
    const Seen whole = Read(reader, file);
    std::size_t lastRight = 0;
    bool isShortOnce = false;
    for (std::size_t length = 1; length <= file.size(); ++length) {
        const Seen part = Read(reader, FirstBytes(file, length));
        if (part.pixels.empty()) {
            ASSERT_EQ(lastRight, 0U) << "nothing left at " << length;
            continue;
        }
        ASSERT_EQ(std::pair(part.width, part.height), std::pair(whole.width, whole.height));
        std::size_t right = 0;
        for (std::size_t at = 0; at < whole.pixels.size(); ++at)
            right += part.pixels[at] == whole.pixels[at] ? 1 : 0;
        ASSERT_GE(right, lastRight) << "at " << length;
        isShortOnce = isShortOnce || (right > 0 && right < whole.pixels.size());
        lastRight = right;
    }
    EXPECT_TRUE(isShortOnce) << "no length gave a part of the picture";
}

void ExpectSurvivesDamage(Reader reader, const File &file, void (*repair)(File &))
{
    constexpr std::uint32_t Rounds = 1500;

    const auto check = [reader](const File &damaged) {
        const Seen seen = Read(reader, damaged);
        ASSERT_LE(seen.pixels.size(), std::size_t(8) << 20) << "out of proportion to the file";
    };
    for (std::size_t length = 1; length < file.size(); ++length)
        check(FirstBytes(file, length));

    std::mt19937 random(20);
    for (std::uint32_t round = 0; round < Rounds; ++round) {
        File damaged = file;
        for (std::uint32_t flips = 1 + random() % 4; flips > 0; --flips) {
            // Half of the changes fall on the header, where they hurt most.
            const std::size_t reach =
                random() % 2 ? damaged.size() : std::min<std::size_t>(damaged.size(), 64);
            damaged[random() % reach] = std::uint8_t(random() % 3 ? random() : 0xFF * (random() % 2));
        }
        if (repair != nullptr && round % 2 == 0)
            repair(damaged);
        check(damaged);
    }
}

} // namespace picturefile
