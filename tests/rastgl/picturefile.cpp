#include "rastgl/picturefile.h"

#include "rastgl/rastgl.h"

#include <fstream>
#include <random>
#include <sstream>

#include <gtest/gtest.h>

namespace picturefile
{

Maker &Maker::Little(int size, std::uint32_t value)
{
    for (int byte = 0; byte < size; ++byte)
        bytes.push_back(std::uint8_t(value >> (8 * byte)));
    return *this;
}

Maker &Maker::Big(int size, std::uint32_t value)
{
    for (int byte = size - 1; byte >= 0; --byte)
        bytes.push_back(std::uint8_t(value >> (8 * byte)));
    return *this;
}

Maker &Maker::Raw(const File &more)
{
    bytes.insert(bytes.end(), more.begin(), more.end());
    return *this;
}

Maker &Maker::Zeros(std::size_t count)
{
    bytes.resize(bytes.size() + count);
    return *this;
}

File ToBytes(const Numbers &numbers)
{
    return {numbers.begin(), numbers.end()};
}

std::vector<Case> LoadCases(const char *fileName)
{
    const auto split = [](const std::string &text, int base) {
        Numbers numbers;
        std::istringstream words(text);
        for (std::string word; words >> word;)
            numbers.push_back(std::uint32_t(std::stol(word, nullptr, base)));
        return numbers;
    };
    std::vector<Case> cases;
    std::ifstream file(std::string(PICTURES_FOLDER) + '/' + fileName);
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with('#'))
            continue;
        const std::size_t colon = line.find(": ");
        const std::size_t arrow = line.find("->");
        Case &made = cases.emplace_back(Case{line.substr(0, colon), {}, {}});
        std::istringstream fields(line.substr(colon + 1, arrow - colon - 1));
        for (std::string field; std::getline(fields, field, '|');)
            made.fields.push_back(split(field, made.fields.empty() ? 10 : 16));
        std::istringstream seen(line.substr(arrow + 2));
        seen >> made.seen.width >> made.seen.height >> made.seen.bitsPerPixel;
        std::string pixels;
        std::getline(seen, pixels);
        made.seen.pixels = split(pixels, 16);
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
    for (int row = seen.height - 1; row >= 0; --row) {
        const auto begin = bottomUp.begin() + row * seen.width;
        seen.pixels.insert(seen.pixels.end(), begin, begin + seen.width);
    }
    VTGF_DIB_Free(handle);
    return seen;
}

Seen Read(Reader reader, const File &file)
{
    const auto length = std::int32_t(file.size());
    return Take(reader(file.data(), &length));
}

std::int32_t Hold(int width, int height, const Numbers &topDown)
{
    Numbers bottomUp;
    for (int row = height - 1; row >= 0; --row)
        bottomUp.insert(bottomUp.end(), topDown.begin() + row * width, topDown.begin() + (row + 1) * width);
    const std::int32_t bits = 32;
    return VTGF_Read_Buf(reinterpret_cast<const std::uint8_t *>(bottomUp.data()), &width, &height, &bits);
}

void ExpectReadsAsFarAsItGoes(Reader reader, const File &file)
{
    const Seen whole = Read(reader, file);
    ASSERT_FALSE(whole.pixels.empty());
    std::size_t lastRight = 0;
    bool isShortOnce = false;
    for (std::size_t length = 1; length <= file.size(); ++length) {
        const Seen part = Read(reader, File(file.begin(), file.begin() + std::ptrdiff_t(length)));
        if (part.pixels.empty()) {
            ASSERT_EQ(lastRight, 0U) << "nothing left at " << length;
            continue;
        }
        ASSERT_EQ(part.width, whole.width);
        ASSERT_EQ(part.height, whole.height);
        std::size_t right = 0;
        for (std::size_t at = 0; at < whole.pixels.size(); ++at)
            right += part.pixels[at] == whole.pixels[at] ? 1 : 0;
        ASSERT_GE(right, lastRight) << "at " << length;
        isShortOnce = isShortOnce || (right > 0 && right < whole.pixels.size());
        lastRight = right;
    }
    EXPECT_EQ(lastRight, whole.pixels.size());
    EXPECT_TRUE(isShortOnce) << "no length gave a part of the picture";
}

void ExpectSurvivesDamage(Reader reader, const File &file, void (*repair)(File &))
{
    constexpr int Rounds = 1500;

    const auto check = [reader](const File &damaged) {
        const Seen seen = Read(reader, damaged);
        ASSERT_LE(seen.pixels.size(), std::size_t(8) << 20) << "out of proportion to the file";
    };
    for (std::size_t length = 1; length < file.size(); ++length)
        check(File(file.begin(), file.begin() + std::ptrdiff_t(length)));

    std::mt19937 random(20);
    for (int round = 0; round < Rounds; ++round) {
        File damaged = file;
        for (std::uint32_t flips = 1 + random() % 4; flips > 0; --flips) {
            // Half of the changes fall on the header, where they hurt most.
            const std::size_t reach =
                random() % 2 ? damaged.size() : std::min<std::size_t>(damaged.size(), 64);
            damaged[random() % reach] = std::uint8_t(random() % 3 ? random() : 0xFF * (random() % 2));
        }
        if (repair != nullptr)
            repair(damaged);
        check(damaged);
    }
}

void ExpectReads(Reader reader, const File &file, const Seen &seen)
{
    EXPECT_EQ(Read(reader, file), seen);
    if (seen.height > 1)
        ExpectReadsAsFarAsItGoes(reader, file);
    ExpectSurvivesDamage(reader, file);
}

} // namespace picturefile
