// Taking frames out of the viewer, by events.
#include "gfx/pixels.h"
#include "support/table.h"
#include "support/windowtest.h"
#include "viewer/display.h"
#include "viewer/viewerpage.h"
#include "widgets/desktopdialogs.h"
#include "widgets/filelistbox.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QMessageBox>
#include <QTimer>

#include <filesystem>

namespace wb
{

namespace
{

using namespace Qt::StringLiterals;

constexpr int FrameCount = 300;

FrameSet Frames(int count)
{
    FrameSet document;
    for (int i = 0; i < count; ++i)
        document.Pictures.push_back(FrameBufToDib(MakePicture(20, 20, 0xFFFF0000)));
    document.Count = count;
    return document;
}

TEST(ExportBar, ItsButtonsFollowTheDocumentAndKnowTheirPages)
{
    const FrameTarget pages[] = {FrameTarget::GiCreator, FrameTarget::GaiEditor, FrameTarget::HaiEditor,
                                 FrameTarget::AnimCreator};
    const frmRes res;
    ExportBar bar(res, pages, nullptr);
    for (const TableRow &row : ReadTable("app/exportbuttons.txt", 5)) {
        FrameSet document = Frames(row.Int(0) == 0 ? row.Int(1) : 0);
        document.Mode = DocumentMode(row.Int(0));
        bar.ShowDocument(document, row.Int(2) != 0);
        std::string shown;
        std::string enabled;
        for (const QWidget *button : bar.Buttons()) {
            shown += button->isHidden() ? '0' : '1';
            enabled += button->isEnabled() ? '1' : '0';
        }
        EXPECT_EQ(row.Bytes(3) + row.Bytes(4), shown + enabled) << row.line;
    }
    bar.ShowDocument(Frames(2), false);
    std::string wanted;
    QObject::connect(&bar, &ExportBar::CopyWanted, [&wanted](FrameTarget target, bool all) {
        wanted += std::to_string(int(target)) + (all ? "* " : " ");
    });
    for (QWidget *button : bar.Buttons())
        QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ("0 1 1* 2 2* 3 3* ", wanted);
}

class Export : public WindowTest
{
protected:
    void SetUp() override { folder.MakeFolder("out"); }

    void Show(int frames) const
    {
        window->findChild<Display *>()->Open(u"C:\\boom.gai"_s, [frames] { return Frames(frames); });
        List()->setFocus();
    }

    // The next save dialog for PNG files gives out\x.png.
    void Expect(const QString &proposed, const QString &filter = u"PNG файлы (*.png)|*.png"_s)
    {
        const QString given = folder.Path(u"out\\x."_s + (filter.startsWith(u'J') ? u"jpg"_s : u"png"_s));
        dialogs.answers.push_back({filter, proposed, given});
    }
    std::ptrdiff_t Written() const
    {
        return std::distance(std::filesystem::directory_iterator(folder.Native("out")), {});
    }
};

TEST_F(Export, KeysPressTheButtonsThatAreInView)
{
    OpenWindow();
    QStringList taken;
    QObject::connect(
        Find<ViewerPage>("picPage(0)"), &ViewerPage::GiCreatorWanted,
        [&](std::int32_t handle, const QString &path) { taken << (handle != 0 ? path : u"-"_s); });
    const std::string keys = "sjagvbnmSJ";
    for (const char key : keys)
        Key(key); // no document, no dialog
    Show(1);
    Expect(u"boom"_s);
    Key('s');
    Expect(folder.Path(u"out\\boom"_s), u"JPG файлы (*.jpg)|*.jpg;*.jpe;*.jpeg"_s);
    Key('J');
    EXPECT_EQ(2, Written());
    Key('a'); // one frame is not several
    Show(3);
    QTest::keyClick(Find("sldFrame"), Qt::Key_End);
    List()->setFocus();
    Expect(folder.Path(u"out\\boom_002"_s));
    Key('s');
    Expect(folder.Path(u"out\\boom"_s));
    Key('a');
    EXPECT_EQ(5, Written());
    EXPECT_TRUE(List()->hasFocus());
    for (const char *later : {"cmdCopyGAICR", "cmdCopyGAICRAll", "cmdCopyHAICR", "cmdCopyHAICRAll",
                              "cmdCopyAnimCR", "cmdCopyAnimCRAll"})
        EXPECT_FALSE(Find(later)->isVisible()) << later;
    for (const char key : keys.substr(3, 5)) // of the pages, only the GI creator takes frames yet
        Key(key);
    EXPECT_EQ(u"C:\\boom.gai"_s, taken.join(u' '));
    EXPECT_TRUE(Find("picPage(1)")->isVisible());
    CloseWindow();
    EXPECT_EQ(folder.Path(u"out"_s), WrittenSettings().OpenDir);
}

TEST_F(Export, AbortAndCloseEndItInTheMiddle)
{
    for (const bool closes : {false, true}) {
        OpenWindow();
        Show(FrameCount);
        Expect(closes ? folder.Path(u"out\\boom"_s) : u"boom"_s);
        int yields = 0;
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, [&] {
            if (++yields != 3)
                return;
            for (const char *button : {"cmdSavePNG", "cmdSaveAllPNG", "cmdCopyGICR", "cmdZoomIn", "cmdPlay"})
                EXPECT_FALSE(Find(button)->isEnabled()) << button;
            EXPECT_TRUE(Text("lblStatus").startsWith(u"Сохранение в PNG: "_s));
            if (closes)
                Click("cmdClose");
            else
                Key(Qt::Key_Escape);
            EXPECT_TRUE(window->isVisible()); // the frames are still its own
        });
        timer.start(0);
        Key('a');
        EXPECT_GT(Written(), 0);
        EXPECT_LT(Written(), FrameCount / 2);
        EXPECT_EQ(QString(), Text("lblStatus"));
        EXPECT_EQ(closes, QTest::qWaitFor([this] { return !window->isVisible(); }, closes ? 5000 : 50));
        EXPECT_EQ(!closes, Find("cmdSaveAllPNG")->isEnabled());
        CloseWindow();
    }
}

TEST(DesktopDialogs, AskBeforeACompletedNameReplacesAFile)
{
    const SampleFolder folder;
    folder.Put("x.png");
    const QString x = QString::fromStdString(folder.Native("x"));
    const auto save = [&](QStringList answers) {
        QString met;
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, [&] {
            QWidget *box = QApplication::activeModalWidget();
            if (box == nullptr || answers.isEmpty())
                return;
            const QString answer = answers.takeFirst();
            if (auto *files = qobject_cast<QFileDialog *>(box)) {
                auto *name = files->findChild<QLineEdit *>();
                met += QFileInfo(name->text()).fileName() + u' ';
                name->setText(answer);
                QTest::keyClick(name, Qt::Key_Return);
            } else if (auto *question = qobject_cast<QMessageBox *>(box)) {
                met += question->text() + u' ';
                QTest::mouseClick(question->button(answer == u"yes"_s ? QMessageBox::Yes : QMessageBox::No),
                                  Qt::LeftButton);
            }
        });
        timer.start(10);
        const QString given = DesktopDialogs().SaveFile(u"PNG (*.png)|*.png"_s, folder.Path(u"a"_s));
        EXPECT_TRUE(answers.isEmpty()) << met.toStdString();
        return met + given;
    };
    const QString question = u"Файл x.png уже существует. Заменить? "_s;
    EXPECT_EQ(u"a "_s + question + folder.Path(u"x.png"_s), save({x, u"yes"_s}));
    EXPECT_EQ(u"a "_s + question + u"x.png "_s + folder.Path(u"y.png"_s), save({x, u"no"_s, u"y"_s}));
}

} // namespace

} // namespace wb
