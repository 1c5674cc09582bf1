#include "anim/haiformat.h"
#include "anim/haiframe.h"
#include "anim/haireader.h"
#include "anim/haiwriter.h"
#include "gi/madegi.h"
#include "support/table.h"

namespace wb::test
{
namespace
{

// A pattern but for these numbers of the header: width, height, frames, step, palette.
ByteArray MakeBytes(std::int64_t length, const std::array<std::int32_t, 5> &numbers = {})
{
    ByteArray bytes(std::size_t(std::max<std::int64_t>(length, 52)), 0);
    for (std::size_t i = 0; i < bytes.size(); i++)
        bytes[i] = std::uint8_t(i * i / 7 + i * 11);
    for (std::size_t i = 0; i < 5; i++)
        PutLong(bytes, std::array{4, 8, 16, 20, 48}[i], numbers[i]);
    bytes.resize(std::size_t(length));
    return bytes;
}

// Compares what both readers give with the bytes of the file. Gives "there of shown".
std::string CheckBothWays(ByteView file, std::int64_t limit = 0)
{
    const auto [width, height, count, step, palette] = ReadHaiHeader(file).value_or(HaiHeader());
    const std::int64_t pixels = std::int64_t(width) * height;
    const auto at = [&](std::int64_t place) { // zeroes beyond the end
        return place >= 0 && place < std::ssize(file) ? file[std::size_t(place)] : std::uint8_t(0);
    };
    std::int64_t there = 0, bytes = 0, wrong = 0;
    const FrameSet document = OpenHaiDocument(file, {.MemoryLimit = limit});
    for (std::int64_t i = 0; i < document.Count; i++) {
        const std::int64_t start = 52 + i * step;
        const FrameBuf picture = DibToFrameBuf(document.Pictures[std::size_t(i)]);
        bytes += std::ssize(picture.Pixels);
        const bool isThere =
            PictureBytes(width, height) > 0 && palette > 0 && start >= 0 && start < std::ssize(file);
        there += isThere;
        wrong += HoldsPicture(picture) != isThere;
        for (std::int64_t p = 0; isThere && wrong == 0 && p < 4 * pixels; p++) {
            const std::int64_t entry = at(start + p / 4) * 4 + p % 4; // red, green, blue, alpha
            const std::uint32_t pixel = PixelAt(picture, p / 4 % width, std::int32_t(p / 4 / width));
            wrong += std::uint8_t(pixel >> std::array{16, 8, 0, 24}[std::size_t(p % 4)]) !=
                     (entry < palette ? at(start + pixels + entry) : 0);
        }
    }
    std::vector<FrameBuf> frames;
    ReadHaiProject(file, frames, {}, limit);
    for (std::int64_t i = 0; i < std::ssize(frames); i++) {
        const FrameBuf &frame = frames[std::size_t(i)];
        bytes += pixels + palette;
        for (std::int64_t p = 0; p < pixels + palette; p++)
            wrong += (p < pixels ? frame.Pixels.at(std::size_t(p))
                                 : frame.Palette.at(std::size_t(p - pixels))) != at(52 + i * step + p);
    }
    EXPECT_EQ(0, wrong);
    EXPECT_TRUE(limit == 0 || bytes <= 2 * limit) << bytes;
    EXPECT_LE(std::max(document.Pictures.size(), frames.size()), file.size());
    return std::to_string(there) + " of " + std::to_string(document.Count);
}

TEST(Hai, ReadsWhatFilesHold)
{
    for (const TableRow &row : ReadTable("anim/haiheaders.txt", 8)) {
        const ByteArray file =
            MakeBytes(row.Int(5), {row.Int(0), row.Int(1), row.Int(2), row.Int(3), row.Int(4)});
        EXPECT_EQ(row.Bytes(7), CheckBothWays(file)) << row.line;
        std::vector frames(1, MakePicture(7, 7, 0));
        EXPECT_EQ(row.Int(6), ReadHaiProject(file, frames)) << row.line;
        EXPECT_EQ(row.Int(6) == 0, frames.size() == 1 && frames[0].Width == 7) << row.line;
    }
}

TEST(Hai, LaysFilesOut)
{
    std::vector<FrameBuf> frames, read;
    for (const auto &[width, height, palette] :
         {std::array{128, 128, 1024}, {64, 32, 12}, {150, 130, 1100}}) {
        ReadHaiProject(MakeBytes(9999 + width, {width, height, 1, 1, palette}), read);
        frames.push_back(read[0]);
    }
    const ByteArray file = WriteHai(frames);
    EXPECT_EQ(52 + 3 * 17408, ByteCount(file));
    EXPECT_EQ(
        "200421048000000080000000800000000300000000440000010000000800000000000000000000000000000000000000"
        "00040000",
        QByteArray(reinterpret_cast<const char *>(file.data()), 52).toHex().toStdString());
    for (std::size_t i = 0; i < 3 * 17408; i++) { // what a smaller frame lacks is zero
        const FrameBuf &frame = frames[i / 17408];
        const auto at = std::int32_t(i % 17408), x = at % 128, y = at / 128, entry = at - 16384;
        const bool isHeld = y < 128 ? x < frame.Width && y < frame.Height : entry < frame.PaletteSize;
        const ByteArray &source = y < 128 ? frame.Pixels : frame.Palette;
        ASSERT_EQ(isHeld ? source[std::size_t(y < 128 ? y * frame.Width + x : entry)] : 0, file[52 + i]) << i;
    }
    AbortFlag abort;
    abort.Set();
    EXPECT_TRUE(OpenHaiDocument(file, {.Abort = &abort}).Count == 0 && !abort.IsSet());
}

TEST(Hai, SurvivesDamage)
{
    std::mt19937 random(17);
    constexpr std::int32_t Nasty[] = {0, -1, 1, 52, 300, 16385, 1 << 24, INT32_MAX, INT32_MIN};
    for (std::int64_t length = 0; length <= 262; length++)
        CheckBothWays(MakeBytes(length, {5, 3, 6, 35, 20}), 1 << 16);
    for (int round = 0; round < 3000 && !testing::Test::HasFailure(); round++) {
        std::array<std::int32_t, 5> numbers = {5, 3, 6, 35, 20};
        for (unsigned changes = 1 + random() % 3; changes > 0; changes--)
            numbers[random() % 5] = random() % 2 == 0 ? std::int32_t(random() % 400) : Nasty[random() % 9];
        CheckBothWays(MakeBytes(262, numbers), 1 << 16);
    }
}

// Few colours stay as they are; other sizes are scaled.
TEST(Hai, BringsPicturesToItsSize)
{
    const FrameBuf made =
        MakePicture(128, 128, [](int x, int y) { return unsigned(x / 8 + y / 8 * 16) * 0x01000301U; });
    EXPECT_EQ(made.Pixels, ExpandIndexed(MakeHaiFrame(made)).Pixels);
    const auto halves = [](int x, int y) { return x < 32 ? ~0U : y < 16 ? 0xFF00FF00 : 0U; };
    const FrameBuf frame = ExpandIndexed(MakeHaiFrame(MakePicture(64, 32, halves)));
    EXPECT_EQ(made.Pixels.size(), frame.Pixels.size());
    EXPECT_TRUE(PixelAt(frame, 9, 99) == ~0U && PixelAt(frame, 99, 9) == 0xFF00FF00 &&
                PixelAt(frame, 99, 99) == 0);
}

} // namespace
} // namespace wb::test
