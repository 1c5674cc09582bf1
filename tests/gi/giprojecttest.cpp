#include "gi/giproject.h"
#include "madegi.h"
#include "support/table.h"

namespace wb::test
{
namespace
{

// Where the header (0) and the layers' records (from 1 on) hold left, top, right and bottom.
int PlaceIn(int part)
{
    return part == 0 ? 8 : 40 + 32 * part;
}

class GiProjectTest : public testing::Test
{
protected:
    void OpenSprite(int transClass, int type)
    {
        folder.AddPng("sprite.png", MakeSprite(transClass));
        ASSERT_TRUE(project.OpenPng(folder.Path(QStringLiteral("sprite.png"))));
        project.SetGiType(type);
    }
    ByteArray OpenAndMove(const ByteArray &gi, std::int64_t distance)
    {
        std::filesystem::remove(folder.Native("a.gi")); // faster than cutting it off
        folder.Put("a.gi", TextOf(gi));
        EXPECT_EQ(!gi.empty(), project.OpenGi(folder.Path(QStringLiteral("a.gi"))));
        project.SetStart(GiProject::X, project.Start(GiProject::X) + distance);
        return project.MakeFile(false);
    }
    std::string Offered() const
    {
        std::string types, views;
        for (std::int32_t i = -1; i <= 7; i++) {
            types += project.CanChooseType(i) ? std::to_string(i) : "";
            views += project.CanShow(i) ? std::to_string(i) : "";
        }
        return types + '/' + views + '/' + (project.Colour() == 1 ? "32" : "16");
    }

    SampleFolder folder;
    GiProject project;
};

TEST_F(GiProjectTest, OffersSavesAndMovesEveryTypeOfEveryClass)
{
    for (const TableRow &row : ReadTable("gi/offers.txt", 4))
        for (const bool crop : {false, true}) {
            const FrameBuf sprite = MakeSprite(row.Int(0));
            OpenSprite(row.Int(0), row.Int(1));
            EXPECT_EQ(row.Bytes(2) + row.Bytes(3), Offered()) << row.line;
            EXPECT_EQ(row.Int(0) != 0, project.CanCrop()) << row.line;
            for (const int view : {1, 2, 3}) {
                const auto part = [&](int x, int y) {
                    return (PixelAt(sprite, x, y) >> 24 == 255) == (view == 1) ? PixelAt(sprite, x, y) : 0;
                };
                EXPECT_EQ(MakePicture(37, 23, part).Pixels, project.Layer(view).Pixels) << row.line << view;
            }
            project.SetStart(GiProject::X, 12);
            project.SetStart(GiProject::Y, 34);
            const ByteArray saved = project.MakeFile(crop);
            ByteArray expected = saved;
            for (int i = 0; i <= GetLong(saved, 44); i++)
                for (const int edge : {PlaceIn(i), PlaceIn(i) + 8})
                    PutLong(expected, edge, GetLong(saved, edge) + 10);
            EXPECT_EQ(expected, OpenAndMove(saved, 10)) << row.line;
            EXPECT_EQ(std::tuple(22, 34, row.Int(1)),
                      std::tuple(project.Start(GiProject::X), project.Start(GiProject::Y), project.GiType()));
            EXPECT_EQ(sprite.Pixels, project.Picture().Pixels) << row.line;
            EXPECT_EQ(row.Bytes(3), Offered()) << row.line;
            EXPECT_TRUE(project.CanSave() && project.CanPlace() && !project.CanCrop());
        }
}

TEST_F(GiProjectTest, KeepsTheFileBeingEncodedWhateverHappens)
{
    OpenSprite(2, 2);
    int yields = 0;
    const ByteArray calm = project.MakeFile(true);
    EXPECT_EQ(calm, project.MakeFile(true, [&] {
        EXPECT_TRUE(project.IsBusy() && !project.CanPlace() && !project.CanCrop());
        EXPECT_EQ("//16", Offered());
        EXPECT_TRUE(project.MakeFile(true).empty());
        if (++yields == 1)
            project.Clean();
    }));
    EXPECT_TRUE(yields == 4 && !project.IsBusy() && !project.IsLoaded());
}

TEST_F(GiProjectTest, ChangesNothingButPlacesInDamagedFiles)
{
    const ByteArray whole = Encode(MakeSprite(2), 2, 2, true);
    std::vector<ByteArray> files(1, ByteArray(5000, 'x'));
    for (auto end = whole.begin(); end != whole.end(); ++end)
        files.emplace_back(whole.begin(), end);
    for (const std::int32_t nasty : {INT32_MIN, INT32_MAX, -1, 0, 7, 100'000, 1 << 24})
        for (int position = 4; position < 160; position += 4)
            PutLong(files.emplace_back(whole), position, nasty);
    for (const ByteArray &file : files) {
        ByteArray moved = OpenAndMove(file, 1);
        ASSERT_EQ(file.size(), moved.size());
        const bool isGi = file.size() >= 64 && file[0] == 'g';
        const int count = isGi ? std::clamp(GetLong(file, 44), 0, (ByteCount(file) - 64) / 32) : -1;
        for (int i = 0; i <= count; i++)
            std::copy_n(file.begin() + PlaceIn(i), 16, moved.begin() + PlaceIn(i));
        ASSERT_EQ(file, moved);
        EXPECT_TRUE(isGi || project.SourceWidth() + project.GiType() == 0) << file.size();
    }
    // Numbers move as far as 32 bits go.
    ByteArray far = whole;
    PutLong(far, PlaceIn(0), INT32_MIN);
    PutLong(far, PlaceIn(1) + 8, INT32_MAX);
    const ByteArray moved = OpenAndMove(far, 0);
    EXPECT_EQ(std::pair(0, INT32_MAX), std::pair(GetLong(moved, 8), GetLong(moved, 80)));
}

} // namespace
} // namespace wb::test
