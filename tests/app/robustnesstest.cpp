// Somebody who clicks, types, drops files and closes the window without looking, also while jobs run.
#include "anim/gaiwriter.h"
#include "anim/haiwriter.h"
#include "support/madedat.h"
#include "support/madepkg.h"
#include "support/madesound.h"
#include "support/table.h"
#include "support/windowtest.h"

#include <QApplication>
#include <QLineEdit>
#include <QMimeData>
#include <QScopedValueRollback>
#include <QTimer>
#include <QUrl>

#include <random>

namespace wb
{

namespace
{

constexpr int EventsPerSeed = 3000;
constexpr int MostNested = 3; // jobs that one event after another starts inside each other

class Chance
{
public:
    explicit Chance(unsigned seed) : m_engine(seed) {}
    int Below(int end) { return int(m_engine() % unsigned(end)); }
    bool OneIn(int count) { return Below(count) == 0; }
    template <typename List>
    auto Pick(const List &list)
    {
        return list[typename List::size_type(Below(int(list.size())))];
    }

private:
    std::mt19937 m_engine;
};

// Boxes that are answered at random; time goes on while they are open.
class RandomDialogs : public Dialogs
{
public:
    RandomDialogs(Chance &chance, QStringList paths, QString folder)
        : m_chance(chance), m_paths(std::move(paths)), m_folder(std::move(folder))
    {
    }

    void Error(const QString &, const QString &) override { Wait(); }
    void Information(const QString &, const QString &) override { Wait(); }
    bool Question(const QString &, const QString &) override { return Wait() || isLeaving; }
    bool Warning(const QString &, const QString &) override { return Wait() || isLeaving; }
    Choice YesNoCancel(const QString &, const QString &) override
    {
        Wait();
        return isLeaving ? Choice::No : Choice(m_chance.Below(3));
    }
    QString OpenFile(const QString &, const QString &) override { return Path(m_paths); }
    QStringList OpenFiles(const QString &, const QString &) override
    {
        QStringList paths;
        for (int left = m_chance.Below(4); left > 0; --left)
            paths << m_chance.Pick(m_paths);
        return Wait() ? paths : QStringList();
    }
    QString SaveFile(const QString &filter, const QString &) override
    {
        const QString name = m_folder + QStringLiteral("\\saved%1").arg(m_chance.Below(5));
        return Path({CompletedPath(name, filter, {})});
    }
    QString ChooseFolder(const QString &, const QString &) override { return Path({m_folder}); }
    std::optional<std::int32_t> ChooseColour(std::int32_t colour) override
    {
        return Wait() ? std::optional(colour ^ 0x123456) : std::nullopt;
    }

    bool isLeaving = false; // the end: nothing may keep the window open

private:
    bool Wait()
    {
        QCoreApplication::processEvents();
        return m_chance.OneIn(2);
    }
    QString Path(const QStringList &paths) { return Wait() ? m_chance.Pick(paths) : QString(); }

    Chance &m_chance;
    QStringList m_paths;
    QString m_folder;
};

class Robustness : public testing::TestWithParam<unsigned>
{
protected:
    void SetUp() override
    {
        folder.AddSprites();
        for (const int type : {0, 2, 4})
            folder.AddGi(std::to_string(type) + ".gi", MakeSprite(2), type, 2);
        folder.Put("tone.wav", MakeTone(WavFormat, 8000, 1, 0.1));
        folder.Put("tone.mp3", MakeTone(Mp3Format, 44100, 2, 0.1));
        folder.Put("font.aft", ReadTable("cli/font.txt", 1).at(0).Bytes(0));
        folder.Put("data.dat", TextOf(MadeDat(QStringLiteral("N2 v1,2:a=b b3,4:c P1 1:d=e"))));
        FrameBuf frame = MakeSprite(2);
        frame.GiType = frame.TransType = 2;
        const std::vector<FrameBuf> frames(20, frame);
        folder.Put("frames.gai", TextOf(WriteGai({0, 0, 40, 30}, frames, {.Packed = true})));
        folder.Put("frames.hai", TextOf(WriteHai(std::vector<FrameBuf>(5))));
        folder.Put("archive.pkg", MakePkg({{}, {{QStringLiteral("inside.gi"), folder.Get("2.gi"), true}}}));
        folder.MakeFolder("inner");
        folder.Put("inner/large.bin", std::string(300000, 'l'));
        for (const auto &file : std::filesystem::directory_iterator(folder.Native()))
            paths << folder.Path(QString::fromStdString(file.path().filename().string()));
        dialogs = std::make_unique<RandomDialogs>(chance, paths, folder.Path());
        QObject::connect(&timer, &QTimer::timeout, &timer, [this] {
            QMetaObject::invokeMethod(
                &timer, [this] { Act(); }, Qt::QueuedConnection);
        });
    }

    void Open()
    {
        window =
            std::make_unique<frmMain>(*dialogs, settingsFolder.Path(QStringLiteral("Options.ini")), registry);
        window->show();
        window->OpenCommandLine({folder.Path(), chance.OneIn(2) ? QStringLiteral("2.gi") : QString()});
        window->ShowPage(chance.Below(frmMain::PageCount));
    }

    // What is typed must not lead a job out of the samples.
    void KeepInside()
    {
        for (const char *name :
             {"txtPack_Folder", "txtPack_FileName", "txtUnPack_FileName", "txtUnPack_Folder"}) {
            auto *box = window->findChild<QLineEdit *>(QLatin1String(name));
            ASSERT_NE(nullptr, box) << name;
            if (!box->text().startsWith(folder.Path()))
                box->setText(folder.Path(QStringLiteral("made.pkg")));
        }
    }

    QWidget *AnyControl()
    {
        QWidgetList controls;
        for (QWidget *control : window->findChildren<QWidget *>())
            if (control->isVisible() && control->isEnabled() && !control->size().isEmpty())
                controls << control;
        return controls.isEmpty() ? window.get() : chance.Pick(controls);
    }

    QPoint AnyPlace(const QWidget &control)
    {
        return {chance.Below(control.width()), chance.Below(control.height())};
    }

    void Act()
    {
        if (nested >= MostNested || eventsLeft <= 0 || !window->isVisible())
            return;
        const QScopedValueRollback deeper(nested, nested + 1);
        --eventsLeft;
        KeepInside();
        if (QWidget *popup = QApplication::activePopupWidget(); popup != nullptr && chance.OneIn(2))
            popup->close();
        const int kind = chance.Below(100);
        if (kind < 50)
            Press();
        else if (kind < 70)
            Type();
        else if (kind < 80)
            window->ShowPage(chance.Below(frmMain::PageCount));
        else if (kind < 88)
            Drop();
        else if (kind < 93)
            Drag();
        else if (kind < 96)
            Wheel();
        else if (kind < 99)
            window->resize(1000 + chance.Below(400), 700 + chance.Below(300));
        else if (chance.OneIn(4))
            window->close();
    }

    void Press()
    {
        QWidget *control = AnyControl();
        if (control->objectName() == QStringLiteral("cmdClose") && !chance.OneIn(20))
            return;
        const Qt::MouseButton button = chance.OneIn(20) ? Qt::RightButton : Qt::LeftButton;
        const QPoint place = AnyPlace(*control);
        QTest::mouseClick(control, button, {}, place);
        if (chance.OneIn(4) && control->isVisible())
            QTest::mouseDClick(control, button, {}, place);
    }

    void Type()
    {
        static const std::vector<Qt::Key> keys = {
            Qt::Key_Up,   Qt::Key_Down,   Qt::Key_Left,      Qt::Key_Right, Qt::Key_Home,   Qt::Key_End,
            Qt::Key_Tab,  Qt::Key_Return, Qt::Key_Backspace, Qt::Key_Space, Qt::Key_Delete, Qt::Key_Escape,
            Qt::Key_Plus, Qt::Key_Minus,  Qt::Key_G,         Qt::Key_V,     Qt::Key_B,      Qt::Key_N,
            Qt::Key_M,    Qt::Key_P,      Qt::Key_E,         Qt::Key_1,     Qt::Key_9,      Qt::Key_0};
        if (QWidget *focus = window->focusWidget(); focus != nullptr && focus->isVisible())
            QTest::keyClick(focus, chance.Pick(keys),
                            chance.OneIn(10) ? Qt::ControlModifier : Qt::NoModifier);
    }

    void Drop()
    {
        QMimeData files;
        QList<QUrl> urls;
        for (int left = chance.Below(4); left > 0; --left)
            urls << QUrl::fromLocalFile(QString::fromStdString(ToNativePath(chance.Pick(paths))));
        files.setUrls(urls);
        QWidget *target = AnyControl();
        QDragEnterEvent enter(AnyPlace(*target), Qt::CopyAction, &files, Qt::LeftButton, {});
        QCoreApplication::sendEvent(target, &enter);
        QDropEvent drop(AnyPlace(*target), Qt::CopyAction, &files, Qt::LeftButton, {});
        if (enter.isAccepted() && target->acceptDrops())
            QCoreApplication::sendEvent(target, &drop);
    }

    void Drag()
    {
        QWidget *control = AnyControl();
        QTest::mousePress(control, Qt::LeftButton, {}, AnyPlace(*control));
        for (int left = chance.Below(5); left > 0; --left)
            QTest::mouseMove(control, AnyPlace(*control));
        QTest::mouseRelease(control, Qt::LeftButton, {}, AnyPlace(*control));
    }

    void Wheel()
    {
        QWheelEvent event(QPointF(20, 20), QPointF(20, 20), {}, {0, chance.OneIn(2) ? 120 : -120},
                          Qt::NoButton, chance.OneIn(3) ? Qt::ControlModifier : Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(window->windowHandle(), &event);
    }

    void RunEvents()
    {
        timer.start(1);
        while (eventsLeft > 0) {
            if (!window->isVisible())
                Open();
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        timer.stop();
    }

    Chance chance{GetParam()};
    SampleFolder folder;
    SampleFolder settingsFolder;
    QStringList paths;
    std::unique_ptr<RandomDialogs> dialogs;
    clsRegistryObject registry;
    std::unique_ptr<frmMain> window;
    QTimer timer;
    int eventsLeft = EventsPerSeed;
    int nested = 0;
};

TEST_P(Robustness, NothingThatIsDoneAtRandomDoesHarm)
{
    Open();
    RunEvents();
    dialogs->isLeaving = true;
    window->close();
    EXPECT_TRUE(QTest::qWaitFor([this] { return !window->isVisible(); }, 20000)) << "does not close";
    window.reset();
    if (QWidget *popup = QApplication::activePopupWidget())
        popup->close();
    for (const QWidget *left : QApplication::topLevelWidgets())
        EXPECT_FALSE(left->isVisible()) << left->metaObject()->className();
}

INSTANTIATE_TEST_SUITE_P(Seeds, Robustness, testing::Range(1U, 5U));

} // namespace

} // namespace wb
