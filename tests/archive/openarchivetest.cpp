#include "archive/openarchive.h"
#include "support/madepkg.h"

#include <gtest/gtest.h>

namespace wb
{

namespace
{

struct Opened : testing::Test {
    Opened()
    {
        const MadeFolder root{{},
                              {{QStringLiteral("b.gi"), "stored"}, {QStringLiteral("A.txt"), "packed", true}},
                              {{QStringLiteral("x"), {}, {{QStringLiteral("Y"), {}, {}}}},
                               {QStringLiteral("Gfx"), {{QStringLiteral("in.gi"), "inside"}}, {}}}};
        folder.Put("a.pkg", MakePkg(root));
        folder.Put("empty.pkg", MakePkg({}));
    }

    // The entries of the folder shown, each with what it holds.
    std::string Rows() const
    {
        std::string rows;
        for (const PkgEntry &entry : archive.Entries())
            rows += entry.Name.toStdString() + "=" + TextOf(archive.ReadEntry(entry)) + " ";
        return rows;
    }

    TempFolder folder;
    OpenArchive archive;
};

TEST_F(Opened, FoldersAreWalkedDownAndUp)
{
    ASSERT_TRUE(archive.Open(folder.Path(QStringLiteral("\\a.pkg"))));
    EXPECT_EQ(folder.Path(QStringLiteral("a.pkg")), archive.Location());
    ASSERT_EQ("Gfx= x= A.txt=packed b.gi=stored ", Rows());
    EXPECT_EQ(nullptr, archive.EntryOfRow(0));
    EXPECT_EQ(nullptr, archive.EntryOfRow(5));
    archive.ShowFolder(QStringLiteral("x\\Y"));
    EXPECT_EQ(folder.Path(QStringLiteral("a.pkg\\x\\Y")), archive.Location());
    EXPECT_EQ(1, archive.ShowParent());
    EXPECT_EQ(QStringLiteral("x"), archive.Folder());
    EXPECT_EQ(2, archive.ShowParent());
    EXPECT_EQ(QString(), archive.Folder());
    EXPECT_EQ(-1, archive.ShowParent());
}

TEST_F(Opened, OnlyOneArchiveIsOpenAndAFailureLeavesNone)
{
    ASSERT_TRUE(archive.Open(folder.Path(QStringLiteral("a.pkg"))));
    const PkgHandle kept = archive.Handle();
    const PkgEntry entry = *archive.EntryOfRow(4);
    ASSERT_FALSE(archive.Open(folder.Path(QStringLiteral("none\\a.pkg"))));
    EXPECT_EQ(FileError::PathNotFound, archive.Error());
    EXPECT_EQ(QString(), archive.Path() + archive.Location());
    ByteArray data; // whoever shares the first one goes on reading it
    EXPECT_TRUE(PkgReadEntryData(*kept, data, entry));
    EXPECT_EQ("stored", TextOf(data));
    ASSERT_TRUE(archive.Open(folder.Path(QStringLiteral("empty.pkg"))));
    EXPECT_EQ(FileError::None, archive.Error());
    EXPECT_EQ("", Rows());
}

} // namespace

} // namespace wb
