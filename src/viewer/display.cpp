#include "viewer/display.h"

#include "gfx/graphicslibrary.h"
#include "viewer/frmview.h"
#include "viewer/viewertexts.h"
#include "viewer/zoom.h"
#include "widgets/colour.h"
#include "widgets/dibimage.h"
#include "widgets/picturebutton.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QScopedValueRollback>
#include <QVBoxLayout>

namespace wb
{

namespace
{

constexpr int DrawDelay = 1; // ms

QLabel *NewLabel(const char *name, QWidget *parent)
{
    auto *label = new QLabel(parent);
    label->setObjectName(QLatin1String(name));
    return label;
}

} // namespace

Display::Display(Settings &settings, Dialogs &dialogs, Progress &progress, AbortFlag &abort,
                 const frmRes &res, QWidget *parent)
    : QWidget(parent), m_settings(settings), m_dialogs(dialogs), m_abort(abort),
      m_saver(settings, dialogs, progress, abort),
      picPicture(new PictureArea(QStringLiteral("picPicture"), res.curOpenHand, res.curClosedHand, this)),
      m_playBar(new PlayBar(m_document, settings, res, this)), m_export(new ExportBar(res, this)),
      cmdAlphaView(
          new PictureButton(QStringLiteral("cmdAlphaView"), res.imgPreview, tr("Окно предпросмотра"), this)),
      cmdZoomIn(new PictureButton(QStringLiteral("cmdZoomIn"), res.imgZoomIn, tr("Увеличить (+)"), this)),
      cmdZoomOut(new PictureButton(QStringLiteral("cmdZoomOut"), res.imgZoomOut, tr("Уменьшить (-)"), this)),
      cmdAbort(new PictureButton(QStringLiteral("cmdAbort"), res.imgAbort, tr("Прервать (Esc)"), this)),
      lblInfo(NewLabel("lblInfo", this)), lblFrames(NewLabel("lblFrames", this)),
      lblZoom(NewLabel("lblZoom", this)), lblSize(NewLabel("lblSize", this)),
      m_preview(new frmView(settings, this))
{
    cmdAlphaView->setCheckable(true);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addWidget(MakeToolBar());
    column->addWidget(picPicture, 1);
    column->addWidget(MakeStatusStrip());

    tmrDraw.setInterval(DrawDelay);
    tmrDraw.setSingleShot(true);
    connect(&tmrDraw, &QTimer::timeout, this, &Display::DrawCurrentFrame);
    connect(cmdAlphaView, &QToolButton::toggled, this, &Display::CheckPreview);
    connect(cmdZoomIn, &QToolButton::clicked, this, [this] { SetZoom(ZoomedIn(m_zoom)); });
    connect(cmdZoomOut, &QToolButton::clicked, this, [this] { SetZoom(ZoomedOut(m_zoom)); });
    connect(m_export, &ExportBar::SaveWanted, this,
            [this](ExportFormat format) { m_saver.Save(m_document, m_documentPath, m_frame, format); });
    connect(m_export, &ExportBar::SaveAllWanted, this, &Display::SaveAll);
    connect(m_export, &ExportBar::CopyWanted, this, &Display::CopyWanted);
    connect(cmdAbort, &QToolButton::clicked, this, [this] { m_abort.Set(); });
    connect(cmdAbort, &QToolButton::released, this, &Display::Released);
    connect(m_playBar, &PlayBar::FrameMoved, this, &Display::FrameMoved);
    connect(picPicture, &PictureArea::Released, this, &Display::Released);
    connect(picPicture, &PictureArea::FileDropped, this, &Display::FileDropped);
    OrderTabs();
    UpdateFrameTexts();
    UpdateButtons();
}

QWidget *Display::MakeToolBar()
{
    auto *bar = new QWidget(this);
    auto *row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(ExportBar::ButtonGap);
    row->addWidget(m_playBar, 1);
    row->addSpacing(ExportBar::GroupGap);
    row->addWidget(m_export);
    row->addSpacing(ExportBar::GroupGap);
    row->addWidget(cmdAlphaView);
    row->addWidget(cmdZoomOut);
    row->addWidget(cmdZoomIn);
    row->addSpacing(ExportBar::GroupGap);
    row->addWidget(cmdAbort);
    return bar;
}

QWidget *Display::MakeStatusStrip()
{
    auto *strip = new QWidget(this);
    auto *row = new QHBoxLayout(strip);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(12);
    row->addWidget(lblInfo, 1);
    for (QLabel *label : {lblFrames, lblZoom, lblSize})
        row->addWidget(label);
    return strip;
}

bool Display::HasPictures() const
{
    return m_document.Mode == DocumentMode::Pictures && m_document.Count > 0;
}

std::int32_t Display::CurrentPicture() const
{
    return HasPictures() && m_frame < m_document.Count ? m_document.Pictures[std::size_t(m_frame)] : 0;
}

std::int32_t Display::FrameWidth() const
{
    return Graphics().VTGF_DIB_GetWidth(CurrentPicture());
}

std::int32_t Display::FrameHeight() const
{
    return Graphics().VTGF_DIB_GetHeight(CurrentPicture());
}

void Display::Open(const QString &path, const std::function<FrameSet()> &open)
{
    if (m_busy)
        return;
    m_abort.Clear();
    m_documentPath = path;
    CloseDocument();
    m_document = open();
    ShowDocument();
}

void Display::CloseDocument()
{
    m_playBar->Reset();
    m_shown = false;
    SetBusy(true);
    m_frame = 0;
    FreeFrameSet(m_document);
    UpdateFrameTexts();
}

void Display::ShowDocument()
{
    if (HasPictures())
        m_zoom = m_settings.DrawStretch
                     ? FitZoom(FrameWidth(), FrameHeight(), picPicture->InnerSize().width(),
                               picPicture->InnerSize().height())
                     : 100;
    picPicture->Clear();
    picPicture->ResetPlace();
    m_shown = true;
    DrawCurrentFrame();
    TellLeftOut(m_dialogs, m_document.LeftOut);
    SetBusy(false);
    m_playBar->AutoPlay();
}

void Display::Redraw()
{
    picPicture->SetBackColour(ToQColor(m_settings.BackColor1));
    DrawCurrentFrame();
}

void Display::CheckPreview()
{
    const bool on = cmdAlphaView->isChecked() && window()->isVisible() && !window()->isMinimized();
    if (on == m_preview->IsOn())
        return;
    m_preview->SetOn(on);
    DrawCurrentFrame();
}

void Display::KeepPreviewOnTop(bool isMainActive)
{
    m_preview->KeepOnTop(isMainActive);
}

void Display::Release()
{
    CloseDocument();
    picPicture->Clear();
    m_preview->hide();
    tmrDraw.stop();
}

void Display::SetBusy(bool busy)
{
    m_busy = busy;
    UpdateButtons();
    Q_EMIT BusyChanged(busy);
}

void Display::UpdateButtons()
{
    const bool pictures = HasPictures() && !m_busy;
    cmdAlphaView->setEnabled(pictures);
    cmdZoomIn->setEnabled(pictures && m_zoom < MaxZoom);
    cmdZoomOut->setEnabled(pictures && m_zoom > MinZoom);
    m_playBar->Update(m_busy);
    cmdAbort->setEnabled(m_busy);
    m_export->ShowDocument(m_document, m_busy);
}

void Display::UpdateFrameTexts()
{
    lblInfo->setText(StatusText(m_document, m_frame));
    lblFrames->setText(FrameText(m_document, m_frame));
    lblZoom->setText(ZoomText(m_document, m_zoom));
    lblSize->setText(SizeText(m_document, m_frame));
}

void Display::DrawCurrentFrame()
{
    UpdateFrameTexts();
    if (!m_shown)
        return;
    const bool previewOnly =
        m_preview->ShowPreview(CurrentPicture()) && m_preview->IsOn() && m_settings.ViewDrawOnly;
    const QSize size(Scaled(FrameWidth(), m_zoom), Scaled(FrameHeight(), m_zoom));
    const QImage image = previewOnly ? QImage() : ComposedImage(CurrentPicture(), m_settings.BackColor2);
    const bool drawable = previewOnly || FrameWidth() == 0 || !image.isNull();
    if (drawable && picPicture->Show(image, size))
        return;
    // A picture that memory does not suffice for is no smaller at a smaller zoom.
    TellTooLarge(drawable);
}

// Playback goes on behind the box, and its frames must not bring up further ones.
void Display::TellTooLarge(bool drawAgain)
{
    if (m_tellingTooLarge)
        return;
    {
        const QScopedValueRollback telling(m_tellingTooLarge, true);
        m_dialogs.Error(QStringLiteral("Can't zoom more, image is to large."), ErrorTitle);
    }
    if (m_zoom <= MinZoom)
        return;
    m_zoom = ZoomedOut(m_zoom);
    UpdateButtons();
    UpdateFrameTexts();
    picPicture->ResetPlace();
    if (drawAgain)
        DrawCurrentFrame();
}

void Display::SetZoom(std::int32_t zoom)
{
    m_zoom = zoom;
    UpdateButtons();
    picPicture->ResetPlace();
    DrawCurrentFrame();
}

void Display::SaveAll()
{
    m_saver.SaveAll(m_document, m_documentPath, [this](bool busy) { SetBusy(busy); });
    Q_EMIT Released();
}

void Display::FrameMoved(int frame)
{
    if (m_document.Count == 0)
        return;
    m_frame = frame;
    lblFrames->setText(FrameText(m_document, m_frame));
    tmrDraw.start();
}

void Display::OrderTabs()
{
    const QWidgetList order = m_playBar->Controls() + m_export->Buttons() +
                              QWidgetList{cmdAlphaView, cmdZoomOut, cmdZoomIn, cmdAbort};
    for (qsizetype i = 1; i < order.size(); ++i)
        setTabOrder(order[i - 1], order[i]);
}

} // namespace wb
