#include "anim/gaiformat.h"
#include "anim/gaireader.h"
#include "anim/gaiwriter.h"
#include "archive/zlblock.h"
#include "gi/madegi.h"
#include "support/table.h"

namespace wb::test
{
namespace
{

// A file of frames with that data, which is packed for each frame whose bit is set.
ByteArray MakeGai(const GiRect &box, std::int32_t background, const std::vector<ByteArray> &frames,
                  unsigned packed = 0)
{
    const auto count = std::int32_t(frames.size());
    ByteArray gai(count > 1 ? 66 + frames.size() * 16 : 56, 0);
    std::int32_t at = 0;
    for (const std::int32_t value :
         {GaiMagic, 1, box.Left, box.Top, box.Right, box.Bottom, count, background})
        PutLong(gai, 4 * at++, value);
    for (std::int32_t i = 0; i < count; i++) {
        ByteArray data = frames[std::size_t(i)];
        if ((packed >> i & 1) != 0)
            ZlBlockPack(data, frames[std::size_t(i)]);
        PutLong(gai, 48 + i * 8, ByteCount(gai));
        PutLong(gai, 52 + i * 8, ByteCount(data));
        gai.insert(gai.end(), data.begin(), data.end());
    }
    return gai;
}

// Pixels as letters, row by row; an empty one is a dot.
FrameBuf Drawn(const std::string &letters, std::int32_t width)
{
    const auto pixel = [](char letter) { return letter == '.' ? 0 : 0xFF000000U | unsigned(letter); };
    return MakePicture(width, width == 0 ? 0 : int(letters.size()) / width,
                       [&](int x, int y) { return pixel(letters[std::size_t(y * width + x)]); });
}

FrameBuf MakeFrame(FrameBuf picture, std::int32_t x, std::int32_t y, std::int32_t type,
                   std::int32_t transType)
{
    picture.X = x;
    picture.Y = y;
    picture.GiType = type;
    picture.TransType = transType;
    picture.Delay = 50 - 43 * (y - 6) / 2;
    return picture;
}

ByteArray PixelGi(std::int32_t x, std::int32_t y, char letter)
{
    return Encode(MakeFrame(Drawn({letter}, 1), x, y, 0, 1), 0, 1, false);
}

// Both readers give each frame alone on an empty canvas that covers the box.
void ExpectFrames(const ByteArray &file, const GiRect &box, const std::vector<FrameBuf> &frames)
{
    const auto count = std::int32_t(frames.size());
    std::int32_t told = 0;
    GaiContents read;
    ReadGaiProject(file, read, [&](int done, int all) { EXPECT_TRUE(done == ++told && all == count); });
    EXPECT_EQ(told, count);
    FrameBuf canvas;
    const FrameSet document = OpenGaiDocument(file, canvas, {});
    ASSERT_EQ(document.Count, count);
    EXPECT_EQ(document.Kind, "GAI");
    EXPECT_EQ(document.InfoText, std::to_string(frames.back().GiType));
    for (std::size_t i = 0; i < frames.size(); i++) {
        const FrameBuf expected = Decode(Encode(frames[i], 0, 1, false), MakeCanvas(box));
        EXPECT_EQ(read.Frames[i].Pixels, expected.Pixels) << i;
        EXPECT_EQ(PlaceOf(read.Frames[i]), box);
        EXPECT_EQ(read.Frames[i].Delay, count > 1 ? frames[i].Delay : 0);
        EXPECT_EQ(read.Frames[i].GiType, frames[i].GiType);
        EXPECT_EQ(document.FrameTypes[i], frames[i].GiType);
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
    std::vector<FrameBuf> frames = {MakeFrame(MakePicture(1, 1, 0xFF112233), -5, 6, 0, 1),
                                    MakeFrame(MakePicture(1, 1, 0xFF445566), -4, 8, 0, 1)};
    EXPECT_EQ(WriteGai({-5, 6, 2, 3}, frames, {.Background = true}), files["two"]);
    ExpectFrames(files["two"], {-5, 6, -3, 9}, frames);
    frames.pop_back();
    EXPECT_EQ(WriteGai({-5, 6, 2, 3}, frames, {}), files["one"]);
    ExpectFrames(files["one"], {-5, 6, -3, 9}, frames);
}

TEST(Gai, ComesBackFrameByFrame)
{
    std::vector<FrameBuf> frames;
    for (std::int32_t transType = 0; transType <= 2; transType++)
        for (std::int32_t type = 0; type <= 4; type++)
            if (GiTypeAllowed(type, transType))
                frames.push_back(MakeFrame(MakeSprite(transType), type - 5, 7 + type, type, transType));
    for (int options = 0; options < 4; options++) {
        const GaiWriting writing = {.Packed = options >= 2, .Crop = options % 2 != 0};
        const ByteArray file = WriteGai({-5, 7, 45, 33}, frames, writing);
        ExpectFrames(file, {-5, 7, 40, 40}, frames);
        EXPECT_EQ(GetLong(file, 66 + 16 * std::int32_t(frames.size())), writing.Packed ? ZlTag01 : GiMagic);
    }
}

// Frames move by what is cut off, but for type 4; what encodes to nothing has no data and shows nothing.
TEST(Gai, Crops)
{
    const std::string picture = "....."
                                ".xxx."
                                "..x.."
                                "....."
                                ".....";
    const std::tuple<std::string, std::int32_t, std::int32_t, GiRect> cases[] = {
        {std::string(25, '.'), 2, 1, {}},
        {picture, 1, 1, {8, 10, 11, 12}},
        {picture, 2, 0, {}},
        {picture, 4, 1, {7, 9, 12, 14}},
        {"", 0, 0, {}},
    };
    std::vector<FrameBuf> frames;
    for (const auto &[letters, type, transType, place] : cases)
        frames.push_back(MakeFrame(Drawn(letters, letters.empty() ? 0 : 5), 7, 9, type, transType));
    const ByteArray file = WriteGai({0, 0, 20, 20}, frames, {.Crop = true});
    GaiContents read;
    ASSERT_EQ(ReadGaiProject(file, read), 5);
    std::int32_t end = 66 + 5 * 16;
    for (std::int32_t i = 0; i < 5; i++) {
        const GiRect &place = std::get<GiRect>(cases[i]);
        const GaiFrame frame = ReadGaiFrame(file, ReadGaiHeader(file).value(), i);
        EXPECT_EQ(frame.Offset, place.IsEmpty() ? 0 : end) << i;
        EXPECT_EQ(frame.Length != 0, !place.IsEmpty()) << i;
        EXPECT_EQ(ReadGiHeader(file, frame.Offset).value_or(GiHeader()).Bounds, place) << i;
        EXPECT_EQ(PixelAt(read.Frames[std::size_t(i)], 9, 11) != 0, !place.IsEmpty()) << i;
        end += frame.Length;
    }
    EXPECT_EQ(ByteCount(file), end);
}

TEST(Gai, ChecksProjects)
{
    std::vector<FrameBuf> frames;
    QString text;
    std::int32_t count = 0;
    for (const TableRow &row : ReadTable("anim/errors.txt", 4)) {
        FrameBuf frame = MakeFrame({}, 0, 0, row.Int(1), row.Int(2));
        std::istringstream(row.Bytes(0)) >> frame.X >> frame.Y >> frame.Width >> frame.Height;
        frames.push_back(frame);
        const QStringList errors = row.Text(3).split(QStringLiteral("; "), Qt::SkipEmptyParts);
        count += std::int32_t(errors.size());
        if (!errors.isEmpty())
            text += QStringLiteral("Кадр %1\r\n - ").arg(frames.size()) +
                    errors.join(QStringLiteral("\r\n - ")) + QStringLiteral("\r\n\r\n");
    }
    const GaiErrors found = CheckGaiProject({10, 20, 100, 50}, frames);
    EXPECT_EQ(found.Count, count);
    EXPECT_EQ(found.Text, text + QStringLiteral("Количество ошибок: %1").arg(count));
}

TEST(Gai, DrawsOverBackgrounds)
{
    for (const TableRow &row : ReadTable("anim/backgrounds.txt", 6))
        for (unsigned packed = 0; packed < 4; packed++) {
            FrameBuf canvas = Drawn(row.Bytes(1), row.Int(0));
            const ByteArray file =
                MakeGai({0, 0, 2, 1}, row.Int(2), {PixelGi(0, 0, 'r'), PixelGi(1, 0, 'g')}, packed);
            const FrameSet document = OpenGaiDocument(file, canvas, {.AltMethod = row.Bytes(3) == "on"});
            ASSERT_EQ(document.Count, 2) << row.line;
            for (std::size_t i = 0; i < 2; i++)
                EXPECT_EQ(DibToFrameBuf(document.Pictures[i]).Pixels,
                          Drawn(row.Bytes(4 + i), canvas.Width).Pixels)
                    << row.line << i;
        }
}

TEST(Gai, ReadsHeaders)
{
    for (const TableRow &row : ReadTable("anim/headers.txt", 8)) {
        ByteArray file = MakeGai({}, 5, {{}, {}});
        for (std::int32_t field = 0; field < 5; field++)
            PutLong(file, 8 + field * 4, row.Int(std::size_t(field)));
        file.resize(48 + 29 * 8 + 7, 0);
        GaiContents read;
        EXPECT_EQ(ReadGaiProject(file, read), row.Int(6)) << row.line;
        EXPECT_EQ(ReadGaiProject(ByteArray(99, 'g'), read), 0) << "and changes nothing";
        std::ostringstream got;
        got << read.StartX << ' ' << read.StartY << ' ' << read.Width << ' ' << read.Height;
        EXPECT_EQ(got.str(), row.Bytes(5)) << row.line;
        EXPECT_EQ(read.Background, 5);
        FrameBuf canvas;
        EXPECT_EQ(OpenGaiDocument(file, canvas, {}).Count, row.Int(7)) << row.line;
    }
}

// Writes down what it is told, and sets the flag once so many frames are read.
struct NotedProgress : Progress {
    void ProgressStart(std::int32_t maximum, const QString &text) override { Note(maximum, text); }
    void ProgressStep(std::int32_t value, const QString &text) override { Note(value, text); }
    void ProgressWait() override {}
    void ProgressClear() override { notes += "clear"; }
    void Note(std::int32_t value, const QString &text)
    {
        notes += std::to_string(value) + ": " + text.toStdString() + "; ";
        if (abortAt-- == 0)
            abort.Set();
    }

    explicit NotedProgress(std::int32_t frames) : abortAt(frames) {}
    std::string notes;
    AbortFlag abort;
    std::int32_t abortAt;
};

// And at the limit of memory, where a background counts as large as it is.
TEST(Gai, KeepsTheFramesBeforeAnAbort)
{
    const ByteArray file = MakeGai({0, 0, 1, 1}, 1, std::vector(3, PixelGi(0, 0, 'r')), 3);
    std::string notes = "2: Чтение фреймов: 0 / 3; ";
    for (std::int32_t count = 0; count <= 3; count++) {
        NotedProgress bar(count);
        FrameBuf canvas;
        const FrameSet document = OpenGaiDocument(file, canvas, {.Bar = &bar, .Abort = &bar.abort});
        EXPECT_EQ(document.Count, count);
        EXPECT_EQ(std::ranges::count(document.Pictures, 0), 3 - count);
        EXPECT_FALSE(bar.abort.IsSet());
        EXPECT_EQ(bar.notes, notes + "clear");
        notes += std::to_string(count) + ": Чтение фреймов: " + std::to_string(count + 1) + " / 3; ";

        const std::int64_t limit = count * 4 + 3;
        GaiContents contents;
        EXPECT_EQ(ReadGaiProject(file, contents, {}, limit), count);
        EXPECT_EQ(OpenGaiDocument(file, canvas = {}, {.MemoryLimit = limit}).Count, count);
        canvas = MakeCanvas({0, 0, 2, 5});
        EXPECT_EQ(OpenGaiDocument(file, canvas, {.MemoryLimit = limit * 10}).Count, count);
    }
    NotedProgress bar(-1);
    FrameBuf canvas;
    EXPECT_EQ(OpenGaiDocument(MakeGai({0, 0, 1, 1}, 0, {{}}), canvas, {.Bar = &bar}).Count, 1);
    EXPECT_EQ(bar.notes, "") << "one frame needs no bar";
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
    std::vector<ByteArray> frames;
    for (std::int32_t type = 0; type <= 4; type++)
        frames.push_back(Encode(MakeFrame(RandomPicture(random, 15, 5, 2), 1, 2, 0, 0), type, 2, type == 2));
    for (const unsigned packed : {0U, 0x1FU}) {
        const ByteArray whole = MakeGai({0, 0, 20, 10}, 1, frames, packed);
        for (auto end = whole.begin(); end != whole.end(); ++end)
            ASSERT_NO_FATAL_FAILURE(ReadBothWays(ByteArray(whole.begin(), end))) << end - whole.begin();
        const std::int32_t nasty[] = {0,     -1,      1,       48,         INT32_MAX, INT32_MIN,
                                      16385, 0x10000, 1 << 24, -(1 << 24), 98,        INT32_MAX - 3};
        for (int round = 0; round < 2000; round++) {
            ByteArray file = whole;
            for (unsigned changes = 1 + random() % 4; changes > 0; changes--) {
                const std::size_t position = random() % (random() % 2 == 0 ? 146 : file.size() - 4);
                if (random() % 2 == 0)
                    PutLong(file, std::int32_t(position), nasty[random() % std::size(nasty)]);
                else
                    file[position] = std::uint8_t(random());
            }
            ASSERT_NO_FATAL_FAILURE(ReadBothWays(file)) << round;
        }
    }
}

// A frame that is cut off shows what there is of it, one elsewhere nothing; the next is as ever.
TEST(Gai, LeavesOutWhatIsNotThere)
{
    const ByteArray noise =
        Encode(MakePicture(64, 64, [](int x, int y) { return 1U + x * 977 + y * 3571; }), 0, 1, false);
    ByteArray file = MakeGai({0, 0, 64, 64}, 0, {noise, PixelGi(5, 2, 'b')}, 1);
    const auto shown = [&file](std::int32_t field, std::int32_t value, int y) {
        PutLong(file, field, value);
        GaiContents read;
        EXPECT_EQ(ReadGaiProject(file, read), 2);
        EXPECT_EQ(PixelAt(read.Frames[1], 5, 2), 0xFF000000U | 'b');
        return PixelAt(read.Frames[0], 5, y);
    };
    const std::int32_t length = GetLong(file, 52);
    EXPECT_EQ(shown(52, length / 2, 2), 1U + 5 * 977 + 2 * 3571);
    EXPECT_EQ(shown(52, length / 2, 63), 0U);
    for (const std::int32_t offset : {0, -1, INT32_MIN, INT32_MAX, ByteCount(file) - 3, ByteCount(file)})
        EXPECT_EQ(shown(48, offset, 2), 0U) << offset;
}

} // namespace
} // namespace wb::test
