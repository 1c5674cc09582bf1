// What plays the viewer's document and moves through its frames: the Play button and the frame slider.
#pragma once

#include "gfx/frameset.h"
#include "services/settings.h"
#include "widgets/frmres.h"

#include <QTimer>
#include <QWidget>

class QSlider;

namespace wb
{

class PictureButton;

class PlayBar : public QWidget
{
    Q_OBJECT

public:
    // For what `document` holds at a time. A sound is played as loud as the settings say at that moment.
    PlayBar(const FrameSet &document, const Settings &settings, const frmRes &res, QWidget *parent);

    // Stops playing and goes back to the first frame: before another document comes.
    void Reset();

    // Another document has come, or the viewer's business has changed.
    void Update(bool isBusy);

    // Starts playing what the settings want played at once.
    void AutoPlay();

    // From left to right.
    QWidgetList Controls() const;

Q_SIGNALS:
    void FrameMoved(int frame);

private:
    bool IsSound() const { return m_document.Mode == DocumentMode::Sound; }
    bool CanPlay() const;
    void Toggle();
    void Tick();
    void ShowPlaying();
    void EnableControls();

    const FrameSet &m_document;
    const Settings &m_settings;
    const frmRes &m_res;
    bool m_isBusy = false;
    QTimer tmrAnim;
    PictureButton *cmdPlay;
    QSlider *sldFrame;
};

} // namespace wb
