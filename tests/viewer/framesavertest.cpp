// Saving frames of a document: what is proposed, written, told and left alone.
#include "viewer/framesaver.h"

#include "gfx/pixels.h"
#include "support/fulldisk.h"
#include "support/samplefolder.h"
#include "support/scripteddialogs.h"
#include "support/table.h"
#include "viewer/documentloader.h"

#include <filesystem>
#include <set>

namespace wb
{

namespace
{

using namespace Qt::StringLiterals;

const ScriptedDialogs::Box NoAccess = {u"File access denied."_s, u"Error"_s};

FrameSet Frames(int count)
{
    FrameSet document;
    for (int i = 0; i < count; ++i)
        document.Pictures.push_back(FrameBufToDib(MakePicture(4, 3, 0xFF000000U + std::uint32_t(i))));
    document.Count = count;
    return document;
}

class FrameSaving : public testing::Test, public Progress
{
protected:
    void ProgressStart(std::int32_t maximum, const QString &text) override
    {
        told << QString::number(maximum) + u' ' + text;
    }
    void ProgressStep(std::int32_t value, const QString &text) override
    {
        told << text;
        if (value == abortAt)
            abort.Set();
    }
    void ProgressWait() override {}
    void ProgressClear() override { told << u"clear"_s; }

    // Presses "png", "jpg" or "all"; the dialog proposes and gives names in the folder.
    void Press(const QString &button, const FrameSet &document, const QString &path, int shown,
               const QString &proposed, const QString &chosen)
    {
        settings.OpenDir = folder.Path();
        dialogs.answers = {
            {button == u"jpg"_s ? u"JPG файлы (*.jpg)|*.jpg;*.jpe;*.jpeg"_s : u"PNG файлы (*.png)|*.png"_s,
             folder.Path(proposed), chosen.isEmpty() ? QString() : folder.Path(chosen)}};
        FrameSaver saver(settings, dialogs, *this, abort);
        const auto busy = [this](bool isBusy) { told << (isBusy ? u"busy"_s : u"idle"_s); };
        if (button == u"all"_s)
            saver.SaveAll(document, path, busy);
        else
            saver.Save(document, path, shown, button == u"jpg"_s ? ExportFormat::Jpeg : ExportFormat::Png);
    }
    void SaveAll(const FrameSet &document)
    {
        Press(u"all"_s, document, u"C:\\a.gai"_s, 0, u"a"_s, u"x.png"_s);
    }

    // The number of the frame that was written to a PNG file.
    int FrameIn(const QString &name) const
    {
        const FrameSet document = OpenDocumentFile(folder.Path(name));
        return document.Kind == "PNG" ? DibToFrameBuf(document.Pictures[0]).Pixels[0] : -1;
    }
    std::set<std::string> Files() const
    {
        std::set<std::string> names;
        for (const auto &entry : std::filesystem::directory_iterator(folder.Native()))
            names.insert(entry.path().filename());
        return names;
    }

    SampleFolder folder;
    Settings settings = DefaultSettings();
    ScriptedDialogs dialogs;
    AbortFlag abort;
    QStringList told;
    int abortAt = -1;
};

TEST_F(FrameSaving, ProposesNamesAndWritesWhatIsShown)
{
    for (const TableRow &row : ReadTable("viewer/saves.txt", 7)) {
        folder.MakeFolder("inner");
        Press(row.Text(0), Frames(row.Int(2)), row.Text(1), row.Int(3), row.Text(4),
              row.Bytes(5).empty() ? u""_s : u"inner\\"_s + row.Text(5));
        const QStringList files = row.Text(6).split(u' ', Qt::SkipEmptyParts);
        for (const QString &file : files)
            EXPECT_EQ(file.endsWith(u".png"_s) ? (files.size() > 1 ? int(files.indexOf(file)) : row.Int(3))
                                               : -1,
                      FrameIn(u"inner\\"_s + file))
                << row.line;
        EXPECT_EQ(std::size_t(files.size()), std::filesystem::remove_all(folder.Native("inner")) - 1)
            << row.line;
        EXPECT_EQ(files.empty() ? folder.Path() : folder.Path(u"inner"_s), settings.OpenDir) << row.line;
    }
}

TEST_F(FrameSaving, TheSliderCoversTheUpperJpegQualities)
{
    const FrameSet photo = StillPicture("", FrameBufToDib(MakePicture(64, 64, [](int x, int y) {
                                            return 0xFF000000U + unsigned(x * y * 2654435) % 0xFFFFFFU;
                                        })));
    for (const auto &[slider, quality] :
         {std::pair(0, 28), std::pair(50, 78), std::pair(72, 100), std::pair(100, 100)}) {
        settings.JPEGQuality = slider;
        Press(u"jpg"_s, photo, u"C:\\p.png"_s, 0, u"p"_s, u"p.jpg"_s);
        ASSERT_TRUE(WritePicture(folder.Path(u"q.jpg"_s), photo.Pictures[0], ExportFormat::Jpeg, quality));
        EXPECT_EQ(folder.Get("q.jpg"), folder.Get("p.jpg")) << slider;
    }
}

TEST_F(FrameSaving, AllFramesTellTheirProgressAndStopWhenAborted)
{
    abortAt = 2;
    SaveAll(Frames(5));
    EXPECT_EQ((std::set<std::string>{"x_000.png", "x_001.png"}), Files());
    abortAt = -1; // the flag stays set until the next run
    told.clear();
    SaveAll(Frames(5));
    EXPECT_EQ(5U, folder.EntryCount());
    QStringList expected = {u"busy"_s, u"5 "_s + folder.Path() + u'\\'};
    for (const char16_t number : u"12345"_s.toStdU16String())
        expected << u"Сохранение в PNG: "_s + QChar(number) + u" / 5"_s;
    EXPECT_EQ((expected << u"clear"_s << u"idle"_s).join(u'\n'), told.join(u'\n'));
}

TEST_F(FrameSaving, WhatCannotBeWrittenIsToldOnceAndKeepsTheOlderFile)
{
    for (const char *name : {"x_000.png", "x_001.png", "x.png", "x.jpg"})
        folder.Put(name, "older");
    for (const QString &button : {u"png"_s, u"jpg"_s, u"all"_s}) {
        dialogs.expectedErrors = {NoAccess};
        OnAFullDisk(10, [&] {
            Press(button, Frames(2), u"C:\\x.gai"_s, 0, button == u"all"_s ? u"x"_s : u"x_000"_s,
                  button == u"jpg"_s ? u"x.jpg"_s : u"x.png"_s);
        });
    }
    for (const std::string &name : Files())
        EXPECT_EQ("older", folder.Get(name)) << name;
    folder.MakeFolder("x_002.png");
    dialogs.expectedErrors = {NoAccess};
    SaveAll(Frames(5));
    EXPECT_EQ(0, FrameIn(u"x_000.png"_s));
    EXPECT_EQ(1, FrameIn(u"x_001.png"_s));
    EXPECT_EQ((std::set<std::string>{"x.jpg", "x.png", "x_000.png", "x_001.png", "x_002.png"}), Files());
    EXPECT_EQ(u"clear idle"_s, told.last(2).join(u' '));
}

TEST(SaveDialog, CompletesNamesWithoutAnExtension)
{
    for (const TableRow &row : ReadTable("viewer/completed.txt", 4))
        EXPECT_EQ(row.Text(3), CompletedPath(row.Text(0), u"n|"_s + row.Text(1), row.Text(2))) << row.line;
}

} // namespace

} // namespace wb
