// The right side of the viewer: the document, its frames at a zoom, and what moves through them.
#pragma once

#include "common/progress.h"
#include "gfx/frameset.h"
#include "services/abortflag.h"
#include "services/dialogs.h"
#include "services/settings.h"
#include "viewer/exportbar.h"
#include "viewer/framesaver.h"
#include "viewer/playbar.h"
#include "widgets/frmres.h"
#include "widgets/picturearea.h"

#include <QTimer>
#include <QWidget>

#include <functional>

class QLabel;

namespace wb
{

class PictureButton;
class frmView;

class Display : public QWidget
{
    Q_OBJECT

public:
    Display(Settings &settings, Dialogs &dialogs, Progress &progress, AbortFlag &abort, const frmRes &res,
            QWidget *parent);

    const QString &DocumentPath() const { return m_documentPath; }

    // Some frames of the document were not read, because that was aborted or memory was short.
    bool IsCutShort() const
    {
        return m_document.Count < std::ssize(m_document.Pictures) || m_document.LeftOut > 0;
    }

    const FrameSet &Document() const { return m_document; }
    std::int32_t CurrentFrame() const { return m_frame; }

    // The handle of the frame shown; 0 for none.
    std::int32_t CurrentPicture() const;

    // A document is being replaced, or its frames are being saved.
    bool IsBusy() const { return m_busy; }

    // Replaces the document by what `open` gives, which may let events run, and shows it under `path`. Does
    // nothing while busy.
    void Open(const QString &path, const std::function<FrameSet()> &open);

    // Takes the colours of the settings and draws the current frame.
    void Redraw();

    // The window has come into or gone from view: the preview goes with it.
    void CheckPreview();
    void KeepPreviewOnTop(bool isMainActive);

    // Stops playback and frees the document.
    void Release();

Q_SIGNALS:
    // The browser's list should have the focus.
    void Released();
    void FileDropped(const QString &path);
    void BusyChanged(bool busy);
    // A page should get the current frame, or all of them.
    void CopyWanted(FrameTarget target, bool all);

private:
    QWidget *MakeToolBar();
    QWidget *MakeStatusStrip();
    void CloseDocument();
    void ShowDocument();
    void SetBusy(bool busy);
    void UpdateButtons();
    void UpdateFrameTexts();
    void DrawCurrentFrame();
    void TellTooLarge(bool drawAgain);
    void SaveAll();
    void OrderTabs();
    void SetZoom(std::int32_t zoom);
    void FrameMoved(int frame);
    bool HasPictures() const;
    std::int32_t FrameWidth() const;
    std::int32_t FrameHeight() const;

    Settings &m_settings;
    Dialogs &m_dialogs;
    AbortFlag &m_abort;
    FrameSaver m_saver;
    FrameSet m_document;
    QString m_documentPath;
    std::int32_t m_frame = 0;
    std::int32_t m_zoom = 100;
    bool m_busy = false;
    bool m_shown = false; // the document is complete on screen
    bool m_tellingTooLarge = false;

    QTimer tmrDraw;
    PictureArea *picPicture;
    PlayBar *m_playBar;
    ExportBar *m_export;
    PictureButton *cmdAlphaView;
    PictureButton *cmdZoomIn;
    PictureButton *cmdZoomOut;
    PictureButton *cmdAbort;
    QLabel *lblInfo;
    QLabel *lblFrames;
    QLabel *lblZoom;
    QLabel *lblSize;
    frmView *m_preview;
};

} // namespace wb
