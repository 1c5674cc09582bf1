#include "anim/gaiformat.h"
#include "anim/gaireader.h"
#include "anim/gaiwriter.h"
#include "gi/madegi.h"
#include "support/table.h"

namespace wb::test
{

// Pixels as letters, row by row; an empty one is a dot.
FrameBuf Drawn(const std::string &letters, std::int32_t width)
{
    return MakePicture(width, int(letters.size()) / width, [&](int x, int y) {
        const char letter = letters.at(y * width + x);
        return letter == '.' ? 0 : 0xFF000000U | unsigned(letter);
    });
}

FrameBuf MakeFrame(const FrameBuf &made, int x, int y, int type = 0, int transType = 1)
{
    return {x, y, made.Width, made.Height, made.Pixels, "", type, transType, y * 43 / 2, {}, 0};
}

// Writes down what it is told, and sets the flag once so many frames are read.
struct NotedProgress : Progress {
    void ProgressStart(std::int32_t maximum, const QString &text) override { ProgressStep(maximum, text); }
    void ProgressStep(std::int32_t value, const QString &text) override
    {
        notes += std::to_string(value) + ": " + text.toStdString() + "; ";
        if (abortAt-- == 0)
            abort.Set();
    }
    void ProgressWait() override {}
    void ProgressClear() override { notes += "clear"; }

    std::string notes;
    AbortFlag abort;
    std::int32_t abortAt = -1;
};

// Both readers give each frame alone on an empty canvas that covers the box.
void ExpectFrames(const ByteArray &file, const GiRect &box, const std::vector<FrameBuf> &frames)
{
    const auto count = std::int32_t(frames.size());
    std::int32_t told = 0;
    GaiContents read;
    ReadGaiProject(file, read, [&](int done, int all) { return done == ++told && all == count; });
    EXPECT_EQ(told, count);
    FrameBuf canvas;
    NotedProgress bar;
    const FrameSet document = OpenGaiDocument(file, canvas, {.Bar = &bar});
    EXPECT_EQ(bar.notes.empty(), count == 1) << bar.notes;
    ASSERT_EQ(document.Count, count);
    EXPECT_EQ(document.Kind + document.InfoText, "GAI" + std::to_string(frames.back().GiType));
    for (std::size_t i = 0; i < frames.size(); i++) {
        const FrameBuf expected = Decode(Encode(frames[i], 0, 1, false), MakeCanvas(box));
        EXPECT_EQ(read.Frames[i].Pixels, expected.Pixels) << i;
        EXPECT_EQ(PlaceOf(read.Frames[i]), box);
        EXPECT_EQ(read.Frames[i].Delay, count > 1 ? frames[i].Delay : 0);
        EXPECT_TRUE(read.Frames[i].GiType == frames[i].GiType && document.FrameTypes[i] == frames[i].GiType);
        EXPECT_EQ(DibToFrameBuf(document.Pictures[i]).Pixels, expected.Pixels) << i;
    }
}

TEST(Gai, LaysFilesOut)
{
    std::map<std::string, ByteArray> files;
    for (const TableRow &row : ReadTable("anim/layout.txt", 4)) {
        ByteArray &file = files[row.Bytes(0)];
        ASSERT_EQ(ByteCount(file), row.Int(1)) << row.line;
        const QByteArray bytes = QByteArray::fromHex(QByteArray::fromStdString(row.Bytes(2)));
        file.insert(file.end(), bytes.begin(), bytes.end());
    }
    std::vector<FrameBuf> frames = {MakeFrame(MakePicture(1, 1, 0xFF112233), -5, 6),
                                    MakeFrame(MakePicture(1, 1, 0xFF445566), -4, 8)};
    EXPECT_EQ(WriteGai({-5, 6, 2, 3}, frames, {.Background = true}), files["two"]);
    ExpectFrames(files["two"], {-5, 6, -3, 9}, frames);
    frames.pop_back();
    EXPECT_EQ(WriteGai({-5, 6, 2, 3}, frames, {}), files["one"]);
    ExpectFrames(files["one"], {-5, 6, -3, 9}, frames);
}

TEST(Gai, ComesBackFrameByFrame)
{
    std::vector<FrameBuf> frames;
    for (const int code : {0, 10, 11, 12, 13, 14, 20, 22, 23, 24}) // transparency and type
        frames.insert(frames.end(), 20,
                      MakeFrame(MakeSprite(code / 10), code % 10 - 5, code / 10 + 7, code % 10, code / 10));
    for (const auto &writing :
         {GaiWriting(), {true, false, true}, {false, true, false}, {true, true, true}}) {
        const ByteArray file = WriteGai({-5, 7, 45, 33}, frames, writing);
        ExpectFrames(file, {-5, 7, 40, 40}, frames);
        EXPECT_EQ(file[66 + 16 * frames.size()], writing.Packed ? 'Z' : 'g');
    }
}

// Frames move by what is cut off, but for type 4; what encodes to nothing has no data and shows nothing.
TEST(Gai, Crops)
{
    const std::vector<TableRow> rows = ReadTable("anim/crops.txt", 7);
    std::vector<FrameBuf> frames(rows.size());
    for (std::size_t i = 0; i < rows.size(); i++)
        frames[i] = MakeFrame(Drawn(rows[i].Bytes(0), 5), 7, 9, rows[i].Int(1), rows[i].Int(2));
    const ByteArray file = WriteGai({0, 0, 20, 20}, frames, {.Crop = true});
    GaiContents read;
    ASSERT_EQ(std::size_t(ReadGaiProject(file, read)), rows.size());
    auto end = std::int32_t(66 + rows.size() * 16);
    for (std::size_t i = 0; i < rows.size(); i++) {
        const GaiFrame frame = ReadGaiFrame(file, ReadGaiHeader(file).value(), std::int32_t(i));
        const GiRect place = {rows[i].Int(3), rows[i].Int(4), rows[i].Int(5), rows[i].Int(6)};
        EXPECT_EQ(ReadGiHeader(file, frame.Offset).value_or(GiHeader()).Bounds, place) << i;
        EXPECT_EQ(frame.Offset, place.IsEmpty() ? 0 : end) << i;
        EXPECT_EQ(PixelAt(read.Frames[i], 9, 11) == 0, place.IsEmpty()) << i;
        end += frame.Length;
    }
    EXPECT_EQ(ByteCount(file), end);
}

TEST(Gai, ChecksProjects)
{
    std::vector<FrameBuf> frames;
    for (const TableRow &row : ReadTable("anim/checked.txt", 6))
        frames.push_back(
            {row.Int(0), row.Int(1), row.Int(2), row.Int(3), {}, "", row.Int(4), row.Int(5), 0, {}, 0});
    const GaiErrors found = CheckGaiProject({10, 20, 100, 50}, frames);
    QString log = QString::fromStdString(ReadFixture("anim/checked.log")).trimmed();
    EXPECT_EQ(found.Text, log.replace(QStringLiteral("\n"), QStringLiteral("\r\n")));
    EXPECT_TRUE(log.endsWith(QStringLiteral(": %1").arg(found.Count)));
}

TEST(Gai, DrawsOverBackgrounds)
{
    const std::array frames = {MakeFrame(Drawn("r", 1), 0, 0), MakeFrame(Drawn("g", 1), 1, 0)};
    const ByteArray gi = Encode(frames[1], 0, 1, false);
    for (const TableRow &row : ReadTable("anim/backgrounds.txt", 6))
        for (int packed = 0; packed <= 2; packed++) { // the first frame alone, or both
            ByteArray file = WriteGai({0, 0, 2, 1}, frames, {.Packed = packed > 0});
            PutLong(file, 28, row.Int(2));
            PutLong(file, 56, packed == 1 ? ByteCount(file) : GetLong(file, 56));
            file.insert(file.end(), gi.begin(), gi.end());
            FrameBuf canvas = Drawn(row.Bytes(1), row.Int(0));
            const FrameSet document = OpenGaiDocument(file, canvas, {.AltMethod = row.Bytes(3) == "on"});
            for (std::size_t i = 0; i < 2; i++)
                EXPECT_EQ(DibToFrameBuf(document.Pictures.at(i)).Pixels,
                          Drawn(row.Bytes(4 + i), canvas.Width).Pixels);
        }
}

TEST(Gai, ReadsHeaders)
{
    for (const TableRow &row : ReadTable("anim/headers.txt", 11)) {
        ByteArray file(48 + 29 * 8 + 7, 0);
        PutLong(file, 0, GaiMagic);
        for (std::int32_t field = 0; field < 6; field++)
            PutLong(file, 8 + field * 4, field < 5 ? row.Int(std::size_t(field)) : -7);
        GaiContents read;
        EXPECT_EQ(ReadGaiProject(file, read), row.Int(9)) << row.line;
        EXPECT_EQ(ReadGaiProject(ByteArray(99, 'g'), read), 0) << "and changes nothing";
        EXPECT_EQ((GaiBox{read.StartX, read.StartY, read.Width, read.Height}),
                  (GaiBox{row.Int(5), row.Int(6), row.Int(7), row.Int(8)}))
            << row.line;
        EXPECT_EQ(read.Background, -7);
        FrameBuf canvas;
        EXPECT_EQ(OpenGaiDocument(file, canvas, {}).Count, row.Int(10)) << row.line;
    }
}

// And at the limit of memory, where a background counts as large as it is.
TEST(Gai, KeepsTheFramesBeforeAnAbort)
{
    const std::vector frames(3, Drawn("r", 1));
    const ByteArray file = WriteGai({0, 0, 1, 1}, frames, {.Background = true, .Packed = true});
    std::string notes = "2: Чтение фреймов: 0 / 3; ";
    for (std::int32_t count = 0; count <= 3; count++) {
        NotedProgress bar;
        bar.abortAt = count;
        FrameBuf canvas;
        const FrameSet document = OpenGaiDocument(file, canvas, {.Bar = &bar, .Abort = &bar.abort});
        EXPECT_TRUE(document.Count == count && !bar.abort.IsSet()) << count;
        EXPECT_EQ(std::ranges::count(document.Pictures, 0), 3 - count);
        EXPECT_EQ(bar.notes, notes + "clear");
        notes += std::to_string(count) + ": Чтение фреймов: " + std::to_string(count + 1) + " / 3; ";

        EXPECT_EQ(document.LeftOut, 0);
        GaiContents contents;
        for (const int pixels : {1, 10}) {
            const std::int64_t limit = (count + 1) * (pixels * 4 + FrameCost) - 1;
            EXPECT_EQ(ReadGaiProject(file, contents, {}, pixels == 1 ? limit : 1), pixels == 1 ? count : 0);
            canvas = pixels == 1 ? FrameBuf() : MakeCanvas({0, 0, 2, 5});
            const FrameSet limited = OpenGaiDocument(file, canvas, {.MemoryLimit = limit});
            EXPECT_TRUE(limited.Count == count && limited.LeftOut == 3 - count);
            EXPECT_EQ(contents.LeftOut, 3 - std::ssize(contents.Frames));
        }
    }
}

// No read or write outside (which the sanitizers see), no hang, and no more memory than allowed.
void ReadBothWays(ByteView file)
{
    constexpr std::size_t Limit = 1 << 20;
    FrameBuf canvas = MakeCanvas({0, 0, 8, 8});
    const FrameSet document = OpenGaiDocument(file, canvas, {.MemoryLimit = Limit});
    ASSERT_LE(std::size_t(document.Count) * canvas.Pixels.size(), Limit);
    GaiContents read;
    ReadGaiProject(file, read, {}, Limit);
    ASSERT_LE(read.Frames.size() * std::size_t(PictureBytes(read.Width, read.Height)), Limit);
    ASSERT_LE(std::max(document.Pictures.size(), read.Frames.size()), file.size() / 8);
}

TEST(Gai, SurvivesDamage)
{
    std::mt19937 random(51);
    std::vector<FrameBuf> frames;
    for (std::int32_t type = 0; type <= 4; type++)
        frames.push_back(MakeFrame(RandomPicture(random, 15, 5, 2), 1, 2, type, 2));
    const std::int32_t nasty[] = {0, -1, 1, 48, 98, 16385, 1 << 24, INT32_MAX - 3, INT32_MAX, INT32_MIN};
    for (const bool packed : {false, true}) {
        const ByteArray whole = WriteGai({0, 0, 20, 10}, frames, {.Background = true, .Packed = packed});
        for (auto end = whole.begin(); end != whole.end(); ++end)
            ASSERT_NO_FATAL_FAILURE(ReadBothWays(ByteArray(whole.begin(), end))) << end - whole.begin();
        for (int round = 0; round < 2000; round++) {
            ByteArray file = whole;
            for (unsigned changes = 1 + random() % 4; changes > 0; changes--) {
                const std::int32_t position = random() % (random() % 2 == 0 ? 146 : file.size() - 4);
                const std::int32_t flipped = GetLong(file, position) ^ 1 << random() % 31;
                PutLong(file, position, random() % 2 == 0 ? flipped : nasty[random() % std::size(nasty)]);
            }
            ASSERT_NO_FATAL_FAILURE(ReadBothWays(file)) << round;
        }
    }
}

// A packed frame that is cut off shows what there is of it, one elsewhere nothing; the next is as ever.
TEST(Gai, LeavesOutWhatIsNotThere)
{
    const auto noise = [](int x, int y) { return 1U + unsigned(x * 977 + y * 3571); };
    const std::array frames = {MakeFrame(MakePicture(64, 64, noise), 0, 0), MakeFrame(Drawn("b", 1), 5, 2)};
    ByteArray file = WriteGai({0, 0, 64, 64}, frames, {.Packed = true});
    const auto shown = [&file](std::int32_t field, std::int32_t value, int y) {
        PutLong(file, field, value);
        GaiContents read;
        EXPECT_EQ(ReadGaiProject(file, read), 2);
        EXPECT_EQ(PixelAt(read.Frames[1], 5, 2), 0xFF000000U | 'b');
        return PixelAt(read.Frames[0], 5, y);
    };
    EXPECT_EQ(shown(52, GetLong(file, 52) / 2, 2), noise(5, 2));
    EXPECT_EQ(shown(52, GetLong(file, 52), 63), 0U);
    for (const std::int32_t offset : {0, -1, INT32_MIN, INT32_MAX, ByteCount(file) - 3, ByteCount(file)})
        EXPECT_EQ(shown(48, offset, 2), 0U) << offset;
}

} // namespace wb::test
