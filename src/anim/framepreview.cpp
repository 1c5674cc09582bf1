#include "anim/framepreview.h"

#include "services/uitext.h"
#include "widgets/colour.h"
#include "widgets/picturearea.h"
#include "widgets/picturebutton.h"

#include <QLabel>
#include <QSignalBlocker>
#include <QSlider>
#include <QVBoxLayout>

#include <algorithm>

namespace wb
{

namespace
{

constexpr int PlayInterval = 50; // ms
const QString NoText = QStringLiteral("|");

QLabel *NewLabel(const QString &name, QWidget *parent)
{
    auto *label = new QLabel(NoText, parent);
    label->setObjectName(name);
    label->setProperty("quiet", true);
    return label;
}

} // namespace

FramePreview::FramePreview(const QString &page, const frmRes &res, QWidget *parent)
    : QWidget(parent), m_res(res),
      m_play(new PictureButton(QStringLiteral("cmd%1_Play").arg(page), res.imgPlay, {}, this)),
      m_slider(new QSlider(Qt::Horizontal, this)),
      m_picture(new PictureArea(QStringLiteral("pic%1_Picture").arg(page), res.curOpenHand, res.curClosedHand,
                                this)),
      m_info(NewLabel(QStringLiteral("lbl%1_Info").arg(page), this)),
      m_frames(NewLabel(QStringLiteral("lbl%1_Frames").arg(page), this)),
      m_size(NewLabel(QStringLiteral("lbl%1_Size").arg(page), this))
{
    m_slider->setObjectName(QStringLiteral("sld%1_Slider").arg(page));
    m_slider->setAccessibleName(tr("Кадр"));
    m_timer.setObjectName(QStringLiteral("tmr%1_Anim").arg(page));
    m_timer.setInterval(PlayInterval);
    m_picture->setAcceptDrops(false);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addWidget(MakePlayer());
    column->addWidget(m_picture, 1);
    column->addWidget(MakeTexts());
    connect(m_play, &QToolButton::clicked, this, &FramePreview::TogglePlaying);
    connect(m_slider, &QSlider::valueChanged, this, &FramePreview::FrameWanted);
    connect(&m_timer, &QTimer::timeout, this, &FramePreview::Tick);
    ShowPlace(0, 0, false);
}

QWidget *FramePreview::MakePlayer()
{
    auto *bar = new QWidget(this);
    auto *row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    row->addWidget(m_play);
    row->addWidget(m_slider, 1);
    return bar;
}

QWidget *FramePreview::MakeTexts()
{
    auto *strip = new QWidget(this);
    auto *row = new QHBoxLayout(strip);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(12);
    row->addWidget(m_frames);
    row->addWidget(m_size);
    row->addWidget(m_info, 1);
    return strip;
}

void FramePreview::ShowPlace(int count, int current, bool isBusy)
{
    m_count = count;
    m_isBusy = isBusy;
    if (count < 2)
        m_timer.stop();
    const QSignalBlocker silent(m_slider);
    m_slider->setMaximum(std::max(count - 1, 1));
    m_slider->setValue(current);
    m_frames->setText(UiText(TextFrames) + (count == 0
                                                ? QStringLiteral("0")
                                                : QStringLiteral("%1 / %2").arg(current + 1).arg(count)));
    ShowPlaying();
}

void FramePreview::ShowPicture(const QImage &frame)
{
    if (!m_picture->Show(frame, frame.size()))
        m_picture->Clear();
    m_size->setText(frame.isNull()
                        ? NoText
                        : m_sizeBar + QStringLiteral("%1 x %2").arg(frame.width()).arg(frame.height()));
}

void FramePreview::SetSizeBar(const QString &bar)
{
    m_sizeBar = bar;
}

void FramePreview::SetBackColour(std::int32_t colour)
{
    m_picture->SetBackColour(ToQColor(colour));
}

void FramePreview::ShowWork(const QString &what, int done, int all)
{
    m_info->setText(QStringLiteral("|  %1%2 / %3").arg(what).arg(done).arg(all));
    m_info->repaint();
}

void FramePreview::ClearWork()
{
    ShowNote(m_note);
}

void FramePreview::ShowNote(const QString &note)
{
    m_note = note;
    m_info->setText(note.isEmpty() ? NoText : QStringLiteral("|  ") + note);
}

void FramePreview::StopPlaying()
{
    m_timer.stop();
    ShowPlaying();
}

void FramePreview::TogglePlaying()
{
    if (m_timer.isActive())
        m_timer.stop();
    else
        m_timer.start();
    ShowPlaying();
}

void FramePreview::ShowPlaying()
{
    const bool isPlaying = m_timer.isActive();
    const QString tip = isPlaying ? tr("Остановить") : tr("Воспроизвести");
    m_play->SetButtonPicture(isPlaying ? m_res.imgStop : m_res.imgPlay);
    m_play->setToolTip(tip);
    m_play->setAccessibleName(tip);
    m_play->setEnabled(m_count > 1 && !m_isBusy);
    m_slider->setEnabled(m_count > 1 && !m_isBusy && !isPlaying);
}

void FramePreview::Tick()
{
    if (m_count > 1)
        m_slider->setValue((m_slider->value() + 1) % (m_slider->maximum() + 1));
    else
        StopPlaying();
}

} // namespace wb
