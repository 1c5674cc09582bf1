#include "viewer/playbar.h"

#include "sound/sound.h"
#include "viewer/exportbar.h"
#include "widgets/picturebutton.h"

#include <QHBoxLayout>
#include <QSlider>

namespace wb
{

namespace
{

constexpr int PlayInterval = 50; // ms

}

PlayBar::PlayBar(const FrameSet &document, const Settings &settings, const frmRes &res, QWidget *parent)
    : QWidget(parent), m_document(document), m_settings(settings), m_res(res),
      cmdPlay(new PictureButton(QStringLiteral("cmdPlay"), res.imgPlay, QString(), this)),
      sldFrame(new QSlider(Qt::Horizontal, this))
{
    sldFrame->setObjectName(QStringLiteral("sldFrame"));
    sldFrame->setMinimumWidth(60); // all the buttons beside it fit into the smallest window
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(ExportBar::ButtonGap);
    row->addWidget(cmdPlay);
    row->addWidget(sldFrame, 1);

    tmrAnim.setInterval(PlayInterval);
    connect(&tmrAnim, &QTimer::timeout, this, &PlayBar::Tick);
    connect(cmdPlay, &QToolButton::clicked, this, &PlayBar::Toggle);
    connect(sldFrame, &QSlider::valueChanged, this, &PlayBar::FrameMoved);
    ShowPlaying();
}

void PlayBar::Reset()
{
    if (tmrAnim.isActive())
        Toggle();
    sldFrame->setValue(0);
    sldFrame->setMaximum(1);
}

void PlayBar::Update(bool isBusy)
{
    m_isBusy = isBusy;
    if (m_document.Count > 1)
        sldFrame->setMaximum(m_document.Count - 1);
    EnableControls();
}

void PlayBar::AutoPlay()
{
    if (IsSound() ? m_settings.AutoPlaySound : m_settings.AutoPlayAnim)
        cmdPlay->click();
}

QWidgetList PlayBar::Controls() const
{
    return {cmdPlay, sldFrame};
}

bool PlayBar::CanPlay() const
{
    return (m_document.Count > 1 || IsSound()) && !m_isBusy;
}

void PlayBar::Toggle()
{
    if (tmrAnim.isActive()) {
        tmrAnim.stop();
        if (IsSound())
            StopSound(m_document.Pictures[0]);
    } else if (CanPlay()) {
        tmrAnim.start();
        if (IsSound()) {
            SetSoundVolume(m_document.Pictures[0], m_settings.SoundVolume);
            PlaySound(m_document.Pictures[0]);
        }
    }
    ShowPlaying();
    EnableControls();
}

void PlayBar::Tick()
{
    if (!IsSound()) {
        sldFrame->setValue((sldFrame->value() + 1) % (sldFrame->maximum() + 1));
        return;
    }
    SetSoundVolume(m_document.Pictures[0], m_settings.SoundVolume);
    if (!IsSoundPlaying(m_document.Pictures[0]))
        Toggle();
}

void PlayBar::ShowPlaying()
{
    const bool playing = tmrAnim.isActive();
    const QString tip = playing ? tr("Остановить (пробел)") : tr("Воспроизвести (пробел)");
    cmdPlay->SetButtonPicture(playing ? m_res.imgStop : m_res.imgPlay);
    cmdPlay->setToolTip(tip);
    cmdPlay->setAccessibleName(tip);
}

void PlayBar::EnableControls()
{
    cmdPlay->setEnabled(CanPlay());
    sldFrame->setEnabled(m_document.Count > 1 && !m_isBusy && !tmrAnim.isActive());
}

} // namespace wb
