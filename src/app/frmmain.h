// The borderless main window: title bar, page buttons, the pages, and the strip below.
#pragma once

#include "app/startup.h"
#include "archive/packjob.h"
#include "archive/unpackjob.h"
#include "dat/dateditor.h"
#include "platform/desktop/notificationicon.h"
#include "platform/desktop/wheelnotches.h"
#include "services/abortflag.h"
#include "services/dialogs.h"
#include "services/settings.h"
#include "widgets/frmlog.h"
#include "widgets/frmres.h"

#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <array>
#include <optional>

class QSplitter;
class QStackedWidget;

namespace wb
{

class CaptionBar;
class clsRegistryObject;
class Page;
class PageButtons;
class StatusStrip;
class ViewerPage;

class frmMain : public QWidget
{
    Q_OBJECT

public:
    static constexpr int PageCount = 9;

    // Up to the first frame on screen: `settingsPath` names the settings file, which is read now and written
    // when the window closes. The registry is kept in line with the settings.
    frmMain(Dialogs &dialogs, QString settingsPath, clsRegistryObject &registry);
    ~frmMain() override;

    // Opens what the command line names, when the first frame is on screen: its folder is shown, its file
    // opened when it is there.
    void OpenCommandLine(const CommandLine &asked);

    // The viewer is there from the beginning, the other pages and what was opened follow the first frame.
    bool IsFirstFrameShown() const { return m_isFirstFrameShown; }

    // Presses cmdPage(page).
    void ShowPage(int page);

protected:
    bool event(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void MakeViewer();
    void MakeOtherPages();
    void AddPage(Page *page);
    void FirstFrameShown();
    void PlaceLists();
    void GiveRoom(int page);
    void PageShown(int page);
    void KeepAssociations();
    void MinimiseToTray();
    void ReturnFromTray();
    void ToggleMaximised();
    void CheckFocus();
    void ScrollByWheel(const QWheelEvent &event);
    bool IsBusy() const;
    void StopUse();
    bool MayClose();
    void AbortJobs();
    void StayOpen();
    void CloseWhenIdle();
    void Shutdown();
    Page *PageAt(int page) const;

    Dialogs &m_dialogs;
    clsRegistryObject &m_registry;
    QString m_settingsPath;
    Settings m_settings;
    AbortFlag m_abort;
    frmRes m_res;
    bool m_active = true;
    bool m_isClosing = false;                 // a page is still busy
    std::array<bool, PageCount> m_mayClose{}; // pages that were asked
    QPointer<QWidget> m_focused;              // when they were disabled for closing
    bool m_isShutDown = false;
    bool m_isFirstFrameShown = false;
    std::optional<CommandLine> m_commandLine; // until then
    int m_currentPage = 0;                    // the page last shown among those that are drawn anew

    ViewerPage *m_viewer = nullptr; // before the others, whose making sends events here
    CaptionBar *m_caption;
    PageButtons *m_pageButtons;
    QSplitter *m_halves; // the viewer's lists, which some pages are used with, and the pages
    QStackedWidget *m_pages;
    StatusStrip *m_status;
    frmLog *m_log;
    UnpackJob m_unpackJob;
    PackJob m_packJob;
    DatEditor m_datEditor;
    NotificationIcon m_notification;
    WheelNotches m_wheel;
    QTimer tmrFocusChecker;
};

} // namespace wb
