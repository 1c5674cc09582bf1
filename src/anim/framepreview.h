// Shows the current frame of an animation that is being edited, moves through the frames, and plays them.
#pragma once

#include "widgets/frmres.h"

#include <QImage>
#include <QTimer>
#include <QWidget>

class QLabel;
class QSlider;

namespace wb
{

class PictureArea;
class PictureButton;

class FramePreview : public QWidget
{
    Q_OBJECT

public:
    // `page` is part of the names of its controls: "GAICR" gives cmdGAICR_Play, sldGAICR_Slider and so on.
    FramePreview(const QString &page, const frmRes &res, QWidget *parent);

    // There are so many frames, and the one at `current` is shown. Nothing can be moved or played while the
    // page is busy; fewer than two frames end playing.
    void ShowPlace(int count, int current, bool isBusy);

    // The frame over a platform colour value, with the size it has; a null image for none.
    void ShowPicture(const QImage &frame);
    void SetSizeBar(const QString &bar);     // what stands before the size, if not "|  "
    void SetBackColour(std::int32_t colour); // around the frame

    // How far a job is: "|  Чтение фреймов: 1 / 3" for `what` = "Чтение фреймов: ". Seen at once, also when
    // no event runs.
    void ShowWork(const QString &what, int done, int all);
    void ClearWork();

    // What stands there when no job runs; without bars before it.
    void ShowNote(const QString &note);

    void StopPlaying();

Q_SIGNALS:
    // By the slider or by playing.
    void FrameWanted(int frame);

private:
    QWidget *MakePlayer();
    QWidget *MakeTexts();
    void TogglePlaying();
    void ShowPlaying();
    void Tick();

    const frmRes &m_res;
    int m_count = 0;
    bool m_isBusy = false;
    QString m_note;
    QString m_sizeBar = QStringLiteral("|  ");
    QTimer m_timer{this};
    PictureButton *m_play;
    QSlider *m_slider;
    PictureArea *m_picture;
    QLabel *m_info;
    QLabel *m_frames;
    QLabel *m_size;
};

} // namespace wb
