// What the viewer shows around a picture: texts, zoom and place.
#include "viewer/viewertexts.h"

#include "gfx/pixels.h"
#include "services/dialogs.h"
#include "support/samplefolder.h"
#include "support/table.h"
#include "viewer/zoom.h"
#include "widgets/panning.h"

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
    EXPECT_EQ(u"Тип: GAI  |  Тип фрейма: 0#|  Кадр: 2 / 2#|  12%#|  3 x 7"_qs, texts(document, 1));
    for (const std::int32_t outside : {-1, 2})
        EXPECT_EQ(u"Тип: GAI|"_qs, StatusText(document, outside) + SizeText(document, outside));
    FreeFrameSet(document);
    EXPECT_EQ(u"#|#|#|"_qs, texts(document, 0));
}

TEST(ViewerTexts, OfTheFolderList)
{
    EXPECT_EQ(u" Объектов: 0"_qs, ObjectsText(0));
    for (const TableRow &row : ReadTable("viewer/sizes.txt", 2))
        EXPECT_EQ(u" Объектов: 7  |  Размер: "_qs + row.Text(1), ObjectsText(7, row.Number(0)));
}

TEST(Zoom, StepsAndFits)
{
    for (const TableRow &row : ReadTable("viewer/zooms.txt", 3)) {
        EXPECT_EQ(row.Int(1), ZoomedIn(row.Int(0))) << row.line;
        EXPECT_EQ(row.Int(2), ZoomedOut(row.Int(0))) << row.line;
    }
    for (const TableRow &row : ReadTable("viewer/fits.txt", 5))
        EXPECT_EQ(row.Int(4), FitZoom(row.Int(0), row.Int(1), row.Int(2), row.Int(3))) << row.line;
}

TEST(Panning, EdgesMeetTheFrameAndNoFurther)
{
    for (const TableRow &row : ReadTable("viewer/pans.txt", 3))
        EXPECT_EQ(row.Int(2), PannedEdge(-7, row.Int(1), row.Int(0), 100)) << row.line;
}

TEST(SaveDialog, CompletesNamesWithoutAnExtension)
{
    for (const TableRow &row : ReadTable("viewer/completed.txt", 4))
        EXPECT_EQ(row.Text(3), CompletedPath(row.Text(0), u"n|"_qs + row.Text(1), row.Text(2))) << row.line;
}

} // namespace wb
