// What the viewer shows around a picture: texts, zoom, place, and the names of what it saves.
#include "viewer/viewertexts.h"

#include "gfx/pixels.h"
#include "support/samplefolder.h"
#include "viewer/frameexport.h"
#include "viewer/zoom.h"
#include "widgets/panning.h"

#include <gtest/gtest.h>

namespace wb
{

TEST(ViewerTexts, OfDocuments)
{
    const auto texts = [](const FrameSet &document, std::int32_t frame) {
        return StatusText(document, frame) + u'#' + FrameText(document, frame) + u'#' +
               ZoomText(document, 12) + u'#' + SizeText(document, frame);
    };
    FrameSet document = StillPicture("GAI", FrameBufToDib(MakePicture(640, 480, 0)));
    EXPECT_EQ(u"Тип: GAI#|  Кадр: 1#|  12%#|  640 x 480"_qs, texts(document, 0));
    document.Pictures.push_back(FrameBufToDib(MakePicture(3, 7, 0)));
    document.Count = 2;
    document.InfoText = "2";
    document.FrameTypes = {2, 0};
    EXPECT_EQ(u"Тип: GAI  |  Тип фрейма: 2#|  Кадр: 1 / 2#|  12%#|  640 x 480"_qs, texts(document, 0));
    EXPECT_EQ(u"Тип: GAI  |  Тип фрейма: 0#|  Кадр: 2 / 2#|  12%#|  3 x 7"_qs, texts(document, 1));
    for (const std::int32_t outside : {-1, 2})
        EXPECT_EQ(u"Тип: GAI|"_qs, StatusText(document, outside) + SizeText(document, outside));
    FreeFrameSet(document);
    EXPECT_EQ(u"#|#|#|"_qs, texts(document, 0));
    EXPECT_EQ(u"#|#|#|"_qs, texts(FrameSet(), 0));
}

TEST(ViewerTexts, OfTheFolderList)
{
    EXPECT_EQ(u" Объектов: 0"_qs, ObjectsText(0));
    EXPECT_EQ(u" Объектов: 7  |  Размер: 1023 байт"_qs, ObjectsText(7, 1023));
    EXPECT_EQ(u" Объектов: 7  |  Размер: 1 Кб"_qs, ObjectsText(7, 1024));
    EXPECT_EQ(u" Объектов: 7  |  Размер: 1023 Кб"_qs, ObjectsText(7, 1048575));
    EXPECT_EQ(u" Объектов: 7  |  Размер: 1 Мб"_qs, ObjectsText(7, 1048576));
    EXPECT_EQ(u" Объектов: 7  |  Размер: 1024 Мб"_qs, ObjectsText(7, 1073741824));
}

TEST(Zoom, StepsAndFits)
{
    const std::vector<std::int32_t> zooms = {0, 11, 12, 24, 25, 37, 50, 99, 100, 200, 1000};
    std::vector<std::int32_t> in(zooms.size());
    std::vector<std::int32_t> out(zooms.size());
    std::transform(zooms.begin(), zooms.end(), in.begin(), ZoomedIn);
    std::transform(zooms.begin(), zooms.end(), out.begin(), ZoomedOut);
    EXPECT_EQ((std::vector{12, 12, 25, 25, 50, 50, 100, 100, 200, 300, 1100}), in);
    EXPECT_EQ((std::vector{12, 12, 12, 12, 12, 25, 25, 50, 50, 100, 900}), out);

    EXPECT_EQ(25, FitZoom(2000, 1000, 500, 500));
    EXPECT_EQ(25, FitZoom(1000, 2000, 500, 500));
    EXPECT_EQ(100, FitZoom(10, 500, 500, 500)) << "never enlarged";
    EXPECT_EQ(100, FitZoom(0, 70'000, 500, 500)) << "nothing to fit";
    EXPECT_EQ(99, FitZoom(503, 1, 497, 1)) << "497.97 counts as 497";
    EXPECT_EQ(0, FitZoom(100, 100, -1, -1)) << "the search ends without room too";
    EXPECT_EQ(1, FitZoom(268'435'456, 1, 2'684'354, 1));
}

TEST(Panning, EdgesMeetTheFrameAndNoFurther)
{
    const auto edges = [](std::int32_t length) {
        std::vector<std::int32_t> places;
        for (const std::int32_t proposed : {0, -1, -50, 1, 80, -51, -90})
            places.push_back(PannedEdge(-7, proposed, length, 100));
        return places;
    };
    EXPECT_EQ((std::vector{0, -1, -50, 0, 0, -50, -50}), edges(150));
    EXPECT_EQ((std::vector{0, -1, -1, 0, 0, -1, -1}), edges(101));
    EXPECT_EQ((std::vector{0, -7, -7, -7, -7, -7, -7}), edges(100)) << "fits exactly";
    EXPECT_EQ((std::vector{-7, -7, -7, -7, -7, -7, -7}), edges(20));
}

TEST(FrameExport, ProposesTheTitleAndTheFrameAndWritesWholeFilesOrNone)
{
    EXPECT_EQ(u"boom_007"_qs, DefaultSaveName(u"C:\\gfx\\boom.gai"_qs, 7, 12));
    EXPECT_EQ(u"boom"_qs, DefaultSaveName(u"C:\\gfx\\boom.gai"_qs, -1, 12));
    EXPECT_EQ(u"pic"_qs, DefaultSaveName(u"C:\\pic.png"_qs, 0, 1));
    EXPECT_EQ(u"x_1000"_qs, DefaultSaveName(u"x"_qs, 1000, 1001));
    EXPECT_EQ(u"Взрыв №2.1_000"_qs, DefaultSaveName(u"C:\\Папка.1\\Взрыв №2.1.gai"_qs, 0, 2));

    const SampleFolder folder;
    folder.Put("старый.png", "older");
    const FrameSet source = StillPicture("PNG", FrameBufToDib(MakePicture(9, 5, 0x40102030)));
    for (const ExportFormat format : {ExportFormat::Png, ExportFormat::Jpeg}) {
        for (const QString &path : {u"нет\\a.png"_qs, u"a*.png"_qs, u"."_qs})
            EXPECT_FALSE(WritePicture(folder.Path(path), source.Pictures[0], format, 90));
        EXPECT_FALSE(WritePicture(folder.Path(u"старый.png"_qs), 0, format, 90)) << "no picture";
    }
    EXPECT_EQ("older", folder.Get("старый.png"));
    EXPECT_EQ(1U, folder.EntryCount());
}

} // namespace wb
