#include "viewer/documentloader.h"

#include "gfx/graphicslibrary.h"
#include "gfx/pixels.h"
#include "support/samplefolder.h"
#include "viewer/filetype.h"
#include "viewer/frameexport.h"

#include <QByteArray>
#include <gtest/gtest.h>

#include <random>

namespace wb
{

namespace
{

using namespace std::string_literals;

std::string Hex(const char *digits)
{
    return QByteArray::fromHex(digits).toStdString();
}

// Colours that 5-6-5 holds, and holes.
FrameBuf Sprite()
{
    return MakePicture(37, 23, [](int x, int y) {
        return (x * y) % 5 == 3 ? 0 : (x + y) % 7 < 4 ? 0xFFFF0000 : 0xFF0000FF;
    });
}

// A GI of every type, and a PNG.
std::vector<std::string> SpriteFiles(const SampleFolder &folder)
{
    std::vector<std::string> files;
    for (int type = 0; type <= 4; ++type) {
        folder.AddGi("sprite", Sprite(), type, 1);
        files.push_back(folder.Get("sprite"));
    }
    folder.AddPng("sprite", Sprite());
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
    using enum FileType;
    const std::pair<FileType, std::vector<std::string>> starts[] = {
        {Bmp, {"BM\x36\x00"s, "BM", "BM\1"}},
        {Jpg, {"\xFF\xD8\xFF\xE0", "\xFF\xD8\xFF\xE1"}},
        {Png, {"\x89PNG\r\n"}},
        {Psd, {"8BPS"}},
        {Aft, {"aft\0"s, "aft"}},
        {Gi, {"gi\0\0\1\0\0\0"s, "gi\0"s, "gi"}},
        {Gai, {"gai\0"s, "gai"}},
        {Hai, {"\x20\x04\x21\x04"}},
        {Sound,
         {"RIFF", "\xFF\xD8\xFF\xDB", "gi\0\1"s, "GI\0\0"s, "gaix", "ZL03", "GIF8", "\x89PN", "B", ""}},
        {Zl01, {"ZL01"}},
        {Zl02, {"ZL02"}},
        {Dds, {"DDS "}}};
    const TempFolder folder;
    for (const auto &[type, files] : starts)
        for (const std::string &bytes : files) {
            folder.Put("тип.png", bytes);
            EXPECT_EQ(type, DetectFileType(folder.Path(u"тип.png"_qs))) << bytes;
            EXPECT_EQ(bytes.size() < 4 ? None : type, DetectBufferType(BytesOf(bytes))) << bytes;
        }
    EXPECT_EQ(Sound, DetectFileType(folder.Path(u"missing.gi"_qs)));
}

TEST(DocumentLoader, OpensPicturesByContentNotByName)
{
    const SampleFolder folder;
    const FrameBuf grey = MakePicture(2, 1, 0xFF808080);
    const FrameSet source = StillPicture("PNG", FrameBufToDib(grey));
    EXPECT_TRUE(WritePicture(folder.Path(u"jpg"_qs), source.Pictures[0], ExportFormat::Jpeg, 100));
    const std::pair<std::string, std::string> cases[] = {
        {"JPG", folder.Get("jpg")},
        {"BMP", Hex("424d3e000000000000003600000028000000020000000100000001001800") + std::string(24, '\0') +
                    Hex("8080808080800000")},
        {"PSD", Hex("38425053000100000000000000030000000100000002000800030000000000000000000000000000") +
                    "\x80\x80\x80\x80\x80\x80"},
        {"DDS", Hex("444453207c000000071000000100000002000000") + std::string(56, '\0') +
                    Hex("200000004000000000000000200000000000ff0000ff0000ff000000") + std::string(24, '\0') +
                    Hex("8080800080808000")}};
    for (const auto &[kind, bytes] : cases) {
        folder.Put("Ложь.gi", bytes);
        const FrameSet document = OpenDocumentFile(folder.Path(u"Ложь.gi"_qs));
        EXPECT_EQ(kind, document.Kind);
        ASSERT_EQ(1U, document.Pictures.size()) << kind;
        EXPECT_EQ(24, Graphics().VTGF_DIB_GetBPP(document.Pictures[0])) << kind;
        EXPECT_EQ(grey.Pixels, DibToFrameBuf(document.Pictures[0]).Pixels) << kind;
    }
}

TEST(DocumentLoader, OpensPngAndEveryGiTypeAndNothingElse)
{
    const SampleFolder folder;
    std::int32_t type = 0;
    for (const std::string &bytes : SpriteFiles(folder)) {
        const FrameSet document = OpenDocumentBuffer(BytesOf(bytes));
        EXPECT_EQ(type < 5 ? "GI" : "PNG", document.Kind);
        EXPECT_EQ(type < 5 ? std::to_string(type) : "", document.InfoText);
        EXPECT_EQ(type < 5 ? std::vector{type} : std::vector<std::int32_t>(), document.FrameTypes);
        ASSERT_EQ(1U, document.Pictures.size());
        EXPECT_EQ(Sprite().Pixels, DibToFrameBuf(document.Pictures[0]).Pixels) << type;
        ++type;
    }
    for (const char *bytes : {"", "gi", "RIFF....", "ZL01....", "ZL02....", "GIF89a..", "DDS ", "\x89PNG"}) {
        folder.Put("x.png", bytes);
        EXPECT_TRUE(IsEmpty(OpenDocumentFile(folder.Path(u"x.png"_qs)))) << bytes;
    }
    EXPECT_TRUE(IsEmpty(OpenDocumentFile(folder.Path(u"missing.png"_qs))));
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
            const std::vector<char> cut(whole.begin(), whole.begin() + std::ptrdiff_t(length));
            const FrameSet document = OpenDocumentBuffer(BytesOf({cut.data(), cut.size()}));
            EXPECT_TRUE(IsEmpty(document) ||
                        Sprite().Pixels.size() == DibToFrameBuf(document.Pictures.at(0)).Pixels.size());
        }
        for (int round = 0; round < 400; ++round) {
            std::string damaged = whole;
            // Every other round aims at the headers, where the sizes are.
            const std::size_t reach =
                round % 2 == 0 ? std::min<std::size_t>(160, whole.size()) : whole.size();
            for (int change = 0; change < 1 + round % 4; ++change)
                damaged[random() % reach] = static_cast<char>(random());
            const FrameSet document = OpenDocumentBuffer(BytesOf(damaged));
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
