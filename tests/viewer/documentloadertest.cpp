#include "viewer/documentloader.h"

#include "gfx/graphicslibrary.h"
#include "gfx/pixels.h"
#include "sound/sound.h"
#include "support/madesound.h"
#include "support/samplefolder.h"
#include "support/table.h"
#include "viewer/filetype.h"

#include <random>

namespace wb
{

namespace
{

// A GI of every type, and a PNG.
std::vector<std::string> SpriteFiles(const SampleFolder &folder)
{
    std::vector<std::string> files;
    for (int type = 0; type <= 4; ++type) {
        folder.AddGi("sprite", MakeSprite(1), type, 1);
        files.push_back(folder.Get("sprite"));
    }
    folder.AddPng("sprite", MakeSprite(1));
    files.push_back(folder.Get("sprite"));
    return files;
}

std::int32_t Width(std::int32_t handle)
{
    return Graphics().VTGF_DIB_GetWidth(handle);
}

bool IsEmpty(const FrameSet &document)
{
    return document.Mode == DocumentMode::Pictures && document.Count == 0 && document.Kind.empty() &&
           document.InfoText.empty() && document.Pictures.empty() && document.FrameTypes.empty();
}

} // namespace

TEST(FileType, IsToldByTheFirstBytesAlone)
{
    const TempFolder folder;
    const QString path = folder.Path(u"тип.png"_qs);
    EXPECT_EQ(FileType::Sound, DetectFileType(path)) << "is missing";
    for (const TableRow &row : ReadTable("viewer/filetypes.txt", 2)) {
        const std::string &bytes = row.Bytes(1);
        folder.Put("тип.png", bytes);
        EXPECT_EQ(FileType(row.Int(0)), DetectFileType(path)) << row.line;
        EXPECT_EQ(FileType(bytes.size() < 4 ? -1 : row.Int(0)), DetectBufferType(BytesOf(bytes))) << row.line;
    }
}

TEST(DocumentLoader, OpensPicturesByContentNotByName)
{
    const TempFolder folder;
    for (const TableRow &row : ReadTable("viewer/pictures.txt", 2)) {
        folder.Put("Ложь.gi", QByteArray::fromHex(row.Bytes(1).c_str()).toStdString());
        const FrameSet document = OpenDocumentFile(folder.Path(u"Ложь.gi"_qs));
        EXPECT_EQ(row.Bytes(0), document.Kind);
        ASSERT_EQ(1U, document.Pictures.size()) << row.line;
        EXPECT_EQ(24, Graphics().VTGF_DIB_GetBPP(document.Pictures[0])) << row.line;
        EXPECT_EQ(MakePicture(2, 1, 0xFF808080).Pixels, DibToFrameBuf(document.Pictures[0]).Pixels)
            << row.line;
    }
}

TEST(DocumentLoader, OpensPngAndEveryGiTypeAndNothingElse)
{
    std::int32_t type = 0;
    for (const std::string &bytes : SpriteFiles(SampleFolder())) {
        const FrameSet document = OpenDocumentBuffer(ArrayOf(bytes));
        EXPECT_EQ(type < 5 ? "GI" : "PNG", document.Kind);
        EXPECT_EQ(type < 5 ? std::to_string(type) : "", document.InfoText);
        EXPECT_EQ(type < 5 ? std::vector{type} : std::vector<std::int32_t>(), document.FrameTypes);
        ASSERT_EQ(1U, document.Pictures.size());
        EXPECT_EQ(MakeSprite(1).Pixels, DibToFrameBuf(document.Pictures[0]).Pixels) << type;
        ++type;
    }
    for (const char *bytes : {"", "gi", "RIFF....", "ZL01....", "ZL02....", "GIF89a..", "DDS ", "\x89PNG"})
        EXPECT_TRUE(IsEmpty(OpenDocumentBuffer(ArrayOf(bytes)))) << bytes;
    EXPECT_TRUE(IsEmpty(OpenDocumentFile(u"C:\\no-such.png"_qs)));
}

TEST(DocumentLoader, OpensSoundsThatLiveAsLongAsTheirDocument)
{
    const TempFolder folder;
    for (const int format : {WavFormat, Mp3Format})
        for (const bool isFile : {false, true}) {
            folder.Put("a", MakeTone(format, 24000, 1, 0.1));
            ByteArray bytes = ArrayOf(folder.Get("a"));
            const std::uint8_t *place = isFile ? nullptr : bytes.data();
            FrameSet first =
                isFile ? OpenDocumentFile(folder.Path(u"a"_qs)) : OpenDocumentBuffer(std::move(bytes));
            EXPECT_EQ(place, first.SoundBytes.data()) << "is not copied";
            EXPECT_TRUE(first.Mode == DocumentMode::Sound && first.Count == 1 && first.InfoText == "24000");
            EXPECT_EQ(format == WavFormat ? "WAV" : "MP3", first.Kind);
            const std::int32_t handle = first.Pictures.at(0);
            FrameSet second = std::move(first);
            EXPECT_EQ(24000, SoundFrequency(handle));
            FreeFrameSet(second);
            EXPECT_EQ(0, SoundFrequency(handle));
        }
}

TEST(DocumentLoader, DocumentsFreeTheirPicturesOnceAndInTime)
{
    FrameSet first = StillPicture("PNG", FrameBufToDib(MakePicture(1, 1, 0)));
    FrameSet second = StillPicture("BMP", FrameBufToDib(MakePicture(2, 1, 0)));
    const std::int32_t older = first.Pictures[0];
    const std::int32_t newer = second.Pictures[0];
    first = std::move(second);
    EXPECT_EQ(0, Width(older)) << "what is replaced goes";
    EXPECT_EQ(DocumentMode::Released, second.Mode); // NOLINT(bugprone-use-after-move): what it is left as
    FreeFrameSet(second);
    EXPECT_EQ(2, Width(newer)) << "no longer the moved-from document's";
    EXPECT_EQ("BMP", FrameSet(std::move(first)).Kind);
    EXPECT_EQ(0, Width(newer)) << "goes with its document";
    EXPECT_TRUE(IsEmpty(StillPicture("PNG", 0)));
}

TEST(DocumentLoader, SurvivesTruncatedAndChangedFiles)
{
    std::mt19937 random(20240229);
    int opened = 0;
    for (const std::string &whole : SpriteFiles(SampleFolder())) {
        for (std::size_t length = 0; length < whole.size(); ++length) {
            // In memory of exactly that length, so that the sanitizer sees a byte read beyond.
            const ByteArray cut(whole.begin(), whole.begin() + std::ptrdiff_t(length));
            const FrameSet document = OpenDocumentBuffer(cut); // a copy of the same length
            EXPECT_TRUE(IsEmpty(document) ||
                        MakeSprite(1).Pixels.size() == DibToFrameBuf(document.Pictures.at(0)).Pixels.size());
        }
        for (int round = 0; round < 400; ++round) {
            std::string damaged = whole;
            // Every other round aims at the headers, where the sizes are.
            const std::size_t reach =
                round % 2 == 0 ? std::min<std::size_t>(160, whole.size()) : whole.size();
            for (int change = 0; change < 1 + round % 4; ++change)
                damaged[random() % reach] = static_cast<char>(random());
            const FrameSet document = OpenDocumentBuffer(ArrayOf(damaged));
            if (IsEmpty(document))
                continue;
            ++opened;
            const std::int64_t height = Graphics().VTGF_DIB_GetHeight(document.Pictures.at(0));
            EXPECT_GT(height, 0);
            EXPECT_LE(height * Width(document.Pictures[0]), 4096 * (4096 + std::int64_t(damaged.size())));
        }
    }
    EXPECT_GT(opened, 600) << "so many that the decoders behind the headers were reached";
}

} // namespace wb
