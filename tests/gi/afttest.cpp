#include "common/bytes.h"
#include "gfx/pixels.h"
#include "gi/aftreader.h"
#include "support/table.h"

#include <algorithm>
#include <random>

namespace wb::test
{

namespace
{

constexpr std::int32_t Orange = 0x000080FF; // red in the low byte

void Append(ByteArray &file, const std::string &numbers)
{
    std::istringstream in(numbers);
    std::int32_t end = ByteCount(file);
    for (std::int32_t number = 0; in >> number;)
        AppendLong(file, end, number);
}

// The font of the table's glyphs: line height 3, margin 1.
ByteArray TableFont()
{
    const std::vector<TableRow> rows = ReadTable("gi/glyphs.txt", 8);
    ByteArray file;
    Append(file, "7628385 -1 " + std::to_string(rows.size()) + " 3 1 -1 -1 -1");
    std::size_t offset = 32 + 64 * rows.size();
    ByteArray data;
    for (const TableRow &row : rows) {
        Append(file, "65 " + row.Bytes(0));
        for (const std::size_t field : {1, 4}) {
            const std::string &coded = row.Bytes(field + 2);
            Append(file, row.Bytes(field) + " -1 -1 " + std::to_string(offset + data.size()) + ' ' +
                             std::to_string(16 + coded.size()));
            Append(data, std::to_string(coded.size()) + ' ' + row.Bytes(field + 1) + " 0");
            data.insert(data.end(), coded.begin(), coded.end());
        }
    }
    file.insert(file.end(), data.begin(), data.end());
    return file;
}

// Rows as the table writes them.
std::vector<std::string> Written(const FrameBuf &picture, std::uint32_t colour)
{
    std::vector<std::string> rows(std::size_t(picture.Height));
    for (std::int32_t at = 0; at < ByteCount(picture.Pixels); at += 4) {
        const auto pixel = std::uint32_t(GetLong(picture.Pixels, at));
        EXPECT_TRUE(pixel == 0 || (pixel & 0xFFFFFF) == colour) << std::hex << pixel;
        rows[std::size_t(picture.Height - 1 - at / 4 / picture.Width)] += pixel == 0 ? '.'
                                                                          : pixel >> 24 == 255
                                                                              ? '#'
                                                                              : char(pixel >> 24);
    }
    return rows;
}

} // namespace

TEST(Aft, DrawsGlyphsAsWorkedOutAndSideBySide)
{
    for (const auto &[colour, pixel] : {std::pair(Orange, 0xFF8000), std::pair(0, 0)}) {
        const auto frames = ReadAftFrames(TableFont(), colour);
        std::vector<std::string> strip(7);
        std::size_t frame = 1;
        for (const TableRow &row : ReadTable("gi/glyphs.txt", 8)) {
            const auto drawn = Written(frames.at(frame++), std::uint32_t(pixel));
            std::string text;
            for (std::size_t y = 0; y < drawn.size(); ++y) {
                text += (y > 0 ? "/" : "") + drawn[y];
                strip.at(y) += drawn[y];
            }
            EXPECT_EQ(row.Bytes(7), text) << row.line;
        }
        EXPECT_EQ(frame, frames.size());
        EXPECT_EQ(strip, Written(frames[0], std::uint32_t(pixel)));
    }
}

TEST(Aft, CountsTheBytesOfAlphaAgainstThoseCoded)
{
    ByteArray font = TableFont();
    const std::uint8_t edges[] = {0x81, 'a'}; // of the first glyph; their number of bytes stands before
    const auto found = std::search(font.begin(), font.end(), std::begin(edges), std::end(edges));
    PutLong(font, std::int32_t(found - font.begin()) - 16, 4);
    EXPECT_EQ("b.......", Written(ReadAftFrames(font, 0).at(1), 0).at(1));
}

TEST(Aft, ABlackPixelWithoutAlphaLeavesWhatIsThere)
{
    ByteArray font = TableFont();
    *std::ranges::find(font.rbegin(), font.rend(), 'm') = 0; // of the second glyph
    EXPECT_EQ("###", Written(ReadAftFrames(font, 0).at(2), 0).at(3));
}

TEST(Aft, LeavesOutWhatIsDamagedAndStaysInProportionToTheFile)
{
    const ByteArray font = TableFont();
    // The number at 8 is the count of glyphs; at 36 a width, at 64 and 68 the place of a bitmap's data.
    for (const TableRow &row : ReadTable("gi/damages.txt", 4)) {
        ByteArray file = font;
        PutLong(file, row.Int(0), row.Int(1));
        const auto frames = ReadAftFrames(file, Orange);
        EXPECT_EQ(row.Number(2), std::ssize(frames)) << row.line;
        const bool isDrawn = frames.size() > 1 && std::ranges::count(frames[1].Pixels, 0x80) > 5;
        EXPECT_EQ(row.Int(3) != 0, isDrawn) << row.line;
    }
    // Glyphs that share one long bitmap are read as often as the file allows, and as many as a font may have.
    ByteArray shared;
    Append(shared, "7628385 0 100000 1 0 0 0 0");
    for (int i = 0; i < 100'000; ++i)
        Append(shared, "0 1 0 0 0 0 0 0 32 6400000 0 0 0 0 0 0");
    EXPECT_EQ(65'537U, ReadAftFrames(shared, Orange).size());
}

TEST(Aft, SurvivesTruncatedAndChangedFiles)
{
    const ByteArray whole = TableFont();
    std::mt19937 random(20240303);
    for (std::size_t round = 0; round < whole.size() + 3000; ++round) {
        ByteArray file(whole.begin(), whole.begin() + std::ptrdiff_t(std::min(round, whole.size())));
        for (std::size_t change = 0; round > whole.size() && change < 1 + round % 4; ++change)
            file[random() % file.size()] = static_cast<std::uint8_t>(random());
        std::size_t bytes = 0;
        for (const FrameBuf &frame : ReadAftFrames(file, Orange))
            bytes += frame.Pixels.size();
        EXPECT_LE(bytes, 2 * 4 * (2048 * 2048 + 64 * file.size()));
    }
}

} // namespace wb::test
