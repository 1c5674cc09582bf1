#include "app/frmmain.h"

#include "anim/animcreatorpage.h"
#include "anim/gaieditorpage.h"
#include "anim/haieditorpage.h"
#include "app/optionspage.h"
#include "app/pagebuttons.h"
#include "app/statusstrip.h"
#include "archive/packerpage.h"
#include "archive/unpackerpage.h"
#include "dat/dateditorpage.h"
#include "gi/gicreatorpage.h"
#include "platform/desktop/windowedges.h"
#include "platform/desktop/windows.h"
#include "platform/programfolder.h"
#include "services/associations.h"
#include "sound/sound.h"
#include "viewer/viewerpage.h"
#include "widgets/captionbar.h"
#include "widgets/page.h"

#include <QCloseEvent>
#include <QSplitter>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <QWindow>

#include <utility>

namespace wb
{

namespace
{

constexpr QSize SmallestWindow(1024, 736);
constexpr int FocusInterval = 10; // ms
constexpr int RowsPerNotch = 3;
constexpr int ViewerIndex = 0;
constexpr int GiCreatorIndex = 1;
constexpr int GaiEditorIndex = 2;
constexpr int HaiEditorIndex = 3;
constexpr int AnimCreatorIndex = 4;
constexpr int DatEditorIndex = 5;
constexpr int UnpackerIndex = 6;
constexpr int PackerIndex = 7;
constexpr int DrawnPages =
    5; // the first pages draw pictures and are asked to draw again when they come forward

} // namespace

frmMain::frmMain(Dialogs &dialogs, QString settingsPath, clsRegistryObject &registry)
    : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint), m_dialogs(dialogs), m_registry(registry),
      m_settingsPath(std::move(settingsPath)), m_settings(LoadSettings(m_settingsPath)),
      m_caption(new CaptionBar(m_res, QStringLiteral("Workbench"), this)),
      m_pageButtons(new PageButtons(this)), m_halves(new QSplitter(this)),
      m_pages(new QStackedWidget(m_halves)), m_status(new StatusStrip(this)), m_log(new frmLog(this)),
      m_unpackJob(*m_status), m_packJob(*m_status), m_datEditor(m_settings, m_dialogs, *m_status)
{
    setObjectName(QStringLiteral("frmMain"));
    setWindowTitle(QStringLiteral("Workbench"));
    setWindowIcon(m_res.imgWindow);
    setMinimumSize(SmallestWindow);
    setAttribute(Qt::WA_StyledBackground);

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(1, 1, 1, 1);
    column->setSpacing(0);
    column->addWidget(m_caption);
    column->addWidget(m_pageButtons);
    column->addWidget(m_halves, 1);
    column->addWidget(m_status);
    MakeViewer();
    PlaceLists();
    KeepAssociations();

    connect(m_pageButtons, &PageButtons::Chosen, this, &frmMain::PageShown);
    connect(m_caption, &CaptionBar::Dragged, this, [this] { StartWindowMove(*this); });
    connect(m_caption, &CaptionBar::Released, this, [this] { CancelWindowMove(*this); });
    connect(m_caption, &CaptionBar::DoubleClicked, this, &frmMain::ToggleMaximised);
    connect(m_caption, &CaptionBar::MinimiseClicked, this, &QWidget::showMinimized);
    connect(m_caption, &CaptionBar::TrayClicked, this, &frmMain::MinimiseToTray);
    connect(m_caption, &CaptionBar::CloseClicked, this, &QWidget::close);
    connect(m_caption, &CaptionBar::Released, m_viewer, &ViewerPage::FocusList);
    connect(&m_notification, &NotificationIcon::Clicked, this, &frmMain::ReturnFromTray);
    connect(&tmrFocusChecker, &QTimer::timeout, this, &frmMain::CheckFocus);
    tmrFocusChecker.start(FocusInterval);
    create();
    windowHandle()->installEventFilter(this);
    new WindowEdges(*this);
    SoundStartup(static_cast<std::int32_t>(winId()));
}

frmMain::~frmMain()
{
    Shutdown();
    delete m_halves; // while there is what the pages refer to
}

void frmMain::MakeViewer()
{
    m_viewer =
        new ViewerPage(m_settings, m_dialogs, *m_status, m_abort, m_res, m_unpackJob, m_datEditor, m_pages);
    AddPage(m_viewer);
    connect(m_viewer, &ViewerPage::ViewerWanted, this, [this] { ShowPage(ViewerIndex); });
    connect(m_viewer, &ViewerPage::DatEditorWanted, this, [this] { ShowPage(DatEditorIndex); });
}

// The pages that are out of view at first. Making them takes as long as what the first frame needs.
void frmMain::MakeOtherPages()
{
    if (m_pages->count() == PageCount)
        return;
    auto *creator = new GiCreatorPage(m_settings, m_dialogs, m_res, m_pages);
    auto *gaiEditor = new GaiEditorPage(m_settings, m_dialogs, *m_log, m_res, m_pages);
    auto *haiEditor = new HaiEditorPage(m_settings, m_dialogs, m_res, m_pages);
    auto *animCreator = new AnimCreatorPage(m_settings, m_dialogs, m_res, m_pages);
    auto *datEditor = new DatEditorPage(m_datEditor, m_pages);
    auto *unpacker = new UnpackerPage(m_settings, m_dialogs, m_unpackJob, m_pages);
    auto *packer = new PackerPage(m_settings, m_dialogs, m_packJob, m_pages);
    auto *options = new OptionsPage(m_settings, m_dialogs, m_pages);
    // As the indexes above say.
    for (Page *page : std::array<Page *, PageCount - 1>{creator, gaiEditor, haiEditor, animCreator, datEditor,
                                                        unpacker, packer, options})
        AddPage(page);
    GiveRoom(m_pages->currentIndex());
    connect(options, &OptionsPage::OptionsChanged, this, &frmMain::KeepAssociations);
    connect(options, &OptionsPage::BackColoursChanged, this, [this] {
        m_viewer->Redraw(); // its preview is in view whatever page is
        PageAt(m_currentPage)->Redraw();
    });

    // What the viewer hands to other pages.
    connect(m_viewer, &ViewerPage::GiCreatorWanted, creator, &GiCreatorPage::TakePicture);
    connect(m_viewer, &ViewerPage::GiCreatorWanted, this, [this] { ShowPage(GiCreatorIndex); });
    connect(m_viewer, &ViewerPage::GaiEditorWanted, this, [this] { ShowPage(GaiEditorIndex); });
    connect(m_viewer, &ViewerPage::GaiEditorWanted, gaiEditor, &GaiEditorPage::TakeFrames);
    connect(m_viewer, &ViewerPage::HaiEditorWanted, this, [this] { ShowPage(HaiEditorIndex); });
    connect(m_viewer, &ViewerPage::HaiEditorWanted, haiEditor, &HaiEditorPage::TakeFrames);
    connect(m_viewer, &ViewerPage::AnimCreatorWanted, this, [this] { ShowPage(AnimCreatorIndex); });
    connect(m_viewer, &ViewerPage::AnimCreatorWanted, animCreator, &AnimCreatorPage::TakeFrames);
    connect(m_viewer, &ViewerPage::PackerWanted, packer, &PackerPage::SetPaths);
    connect(m_viewer, &ViewerPage::PackerWanted, this, [this] { ShowPage(PackerIndex); });
    connect(m_viewer, &ViewerPage::UnpackerWanted, unpacker, &UnpackerPage::SetPaths);
    connect(m_viewer, &ViewerPage::UnpackerWanted, this, [this] { ShowPage(UnpackerIndex); });
    connect(m_viewer, &ViewerPage::ExtractWanted, this, [this, unpacker](const UnpackOrder &order) {
        ShowPage(UnpackerIndex);
        unpacker->Run(order);
    });
    connect(animCreator, &AnimCreatorPage::GaiEditorWanted, this, [this] { ShowPage(GaiEditorIndex); });
    connect(animCreator, &AnimCreatorPage::GaiEditorWanted, gaiEditor, &GaiEditorPage::TakeAnimation);
}

void frmMain::AddPage(Page *page)
{
    page->setObjectName(QStringLiteral("picPage(%1)").arg(m_pages->count()));
    m_pages->addWidget(page);
    page->ApplySettings();
    connect(page, &Page::Idle, this, &frmMain::CloseWhenIdle);
}

// What nobody sees of the first frame comes after it.
void frmMain::FirstFrameShown()
{
    if (m_isShutDown || std::exchange(m_isFirstFrameShown, true))
        return;
    MakeOtherPages();
    if (m_commandLine)
        OpenCommandLine(*std::exchange(m_commandLine, {}));
}

void frmMain::PlaceLists()
{
    m_halves->insertWidget(0, m_viewer->Lists());
    m_halves->setChildrenCollapsible(false);
    m_halves->setHandleWidth(12);
    m_halves->setStretchFactor(0, 0);
    m_halves->setStretchFactor(1, 1);
    m_halves->setSizes({312, 700});
    GiveRoom(ViewerIndex);
}

Page *frmMain::PageAt(int page) const
{
    return static_cast<Page *>(m_pages->widget(page));
}

void frmMain::ShowPage(int page)
{
    m_pageButtons->Press(page);
}

// Pages out of view ask for none, so that the lists have what the page leaves them.
void frmMain::GiveRoom(int page)
{
    for (int i = 0; i < m_pages->count(); ++i) {
        const auto policy = i == page ? QSizePolicy::Preferred : QSizePolicy::Ignored;
        PageAt(i)->setSizePolicy(policy, policy);
    }
    m_viewer->Lists()->setVisible(page == ViewerIndex || page == DatEditorIndex);
}

void frmMain::PageShown(int page)
{
    MakeOtherPages();
    if (page != DatEditorIndex && m_viewer->Lists()->isAncestorOf(focusWidget()))
        m_pages->currentWidget()->setFocus(); // from where the stack takes the focus along
    GiveRoom(page);
    m_pages->setCurrentIndex(page);
    if (page >= DrawnPages)
        return;
    m_currentPage = page;
    PageAt(m_currentPage)->Redraw();
    if (page == ViewerIndex)
        m_viewer->FocusList(); // the stack has given the focus to what is first on the page
}

void frmMain::KeepAssociations()
{
    ApplyAssociations(m_settings, ProgramFolder(), m_registry);
}

void frmMain::OpenCommandLine(const CommandLine &asked)
{
    if (m_isFirstFrameShown)
        m_viewer->OpenNamed(asked.folder, asked.name);
    else
        m_commandLine = asked;
}

void frmMain::MinimiseToTray()
{
    if (!NotificationIcon::Available()) {
        showMinimized();
        return;
    }
    m_notification.Show(m_res.imgWindow, windowTitle());
    hide();
}

void frmMain::ReturnFromTray()
{
    show();
    raise();
    activateWindow();
    m_viewer->Redraw();
    m_notification.Remove();
}

void frmMain::ToggleMaximised()
{
    if (isMaximized())
        showNormal();
    else
        showMaximized();
}

void frmMain::CheckFocus()
{
    const bool active = IsForeground(*this);
    m_viewer->KeepPreviewOnTop(active);
    if (active == m_active)
        return;
    m_active = active;
    m_caption->SetActive(active);
}

bool frmMain::event(QEvent *event)
{
    const bool isHandled = QWidget::event(event);
    const QEvent::Type type = event->type();
    if (type == QEvent::Paint && !m_isFirstFrameShown)
        QTimer::singleShot(0, this, &frmMain::FirstFrameShown);
    if (m_viewer != nullptr && (type == QEvent::Resize || type == QEvent::WindowStateChange ||
                                type == QEvent::Show || type == QEvent::Hide))
        m_viewer->CheckPreview();
    return isHandled;
}

// Whatever lies under the pointer, the wheel scrolls the viewer's list; no wheel event goes further.
bool frmMain::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::Wheel)
        return QWidget::eventFilter(watched, event);
    ScrollByWheel(*static_cast<QWheelEvent *>(event));
    return true;
}

void frmMain::ScrollByWheel(const QWheelEvent &event)
{
    m_viewer->ScrollList(-m_wheel.Step(event) * RowsPerNotch);
}

void frmMain::closeEvent(QCloseEvent *event)
{
    event->ignore();
    StopUse();
    if (!MayClose()) {
        StayOpen();
    } else if (IsBusy()) {
        AbortJobs();
    } else {
        Shutdown();
        event->accept();
    }
}

// Nothing new begins, so that what the pages answer stays true, also while one of them saves.
void frmMain::StopUse()
{
    if (focusWidget() != nullptr)
        m_focused = focusWidget();
    m_pageButtons->setEnabled(false);
    m_halves->setEnabled(false);
}

// Each page is asked once, a busy one when its job has ended.
bool frmMain::MayClose()
{
    for (int i = 0; i < m_pages->count(); ++i) {
        if (m_mayClose[std::size_t(i)] || PageAt(i)->IsBusy())
            continue;
        if (!PageAt(i)->MayClose())
            return false;
        m_mayClose[std::size_t(i)] = true;
    }
    return true;
}

bool frmMain::IsBusy() const
{
    for (int i = 0; i < m_pages->count(); ++i)
        if (PageAt(i)->IsBusy())
            return true;
    return false;
}

// A job runs in a handler of this window, which so must not go before the job has returned.
void frmMain::AbortJobs()
{
    m_isClosing = true;
    m_abort.Set();
    for (int i = 0; i < m_pages->count(); ++i)
        PageAt(i)->Abort();
}

void frmMain::StayOpen()
{
    m_isClosing = false;
    m_mayClose = {};
    m_pageButtons->setEnabled(true);
    m_halves->setEnabled(true);
    if (focusWidget() == nullptr && m_focused != nullptr)
        m_focused->setFocus();
    m_focused.clear();
}

void frmMain::CloseWhenIdle()
{
    if (m_isClosing)
        QMetaObject::invokeMethod(this, &QWidget::close, Qt::QueuedConnection);
}

void frmMain::Shutdown()
{
    if (m_isShutDown)
        return;
    m_isShutDown = true;
    SaveSettings(m_settingsPath, m_settings);
    m_abort.Set();
    tmrFocusChecker.stop();
    for (int i = 0; i < m_pages->count(); ++i)
        PageAt(i)->Release();
    SoundShutdown();
    m_log->Hide();
    m_notification.Remove();
}

} // namespace wb
