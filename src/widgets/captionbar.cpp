#include "widgets/captionbar.h"

#include "widgets/picturebutton.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLinearGradient>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>

namespace wb
{

namespace
{

struct CaptionLook {
    QRgb top;
    QRgb bottom;
};
constexpr CaptionLook ActiveLook{0xFF2F3B4A, 0xFF242E3A};
constexpr CaptionLook InactiveLook{0xFF5D6875, 0xFF535E6B};

} // namespace

CaptionBar::CaptionBar(const frmRes &res, const QString &caption, QWidget *parent)
    : QWidget(parent), m_title(new QLabel(caption, this)),
      cmdMinT(AddButton("cmdMinT", res.imgTray, tr("Свернуть в область уведомлений"))),
      cmdMin(AddButton("cmdMin", res.imgMin, tr("Свернуть"))),
      cmdClose(AddButton("cmdClose", res.imgClose, tr("Закрыть")))
{
    setObjectName(QStringLiteral("picCaption"));
    setFixedHeight(38);

    auto *logo = new QLabel(this);
    logo->setPixmap(res.imgWindow.pixmap(QSize(22, 22)));
    m_title->setObjectName(QStringLiteral("lblCaption"));
    for (QLabel *label : {logo, m_title})
        label->setAttribute(Qt::WA_TransparentForMouseEvents);

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(12, 0, 6, 0);
    row->setSpacing(2);
    row->addWidget(logo);
    row->addSpacing(8);
    row->addWidget(m_title, 1);
    for (PictureButton *button : {cmdMinT, cmdMin, cmdClose})
        row->addWidget(button);

    connect(cmdMinT, &QToolButton::clicked, this, &CaptionBar::TrayClicked);
    connect(cmdMin, &QToolButton::clicked, this, &CaptionBar::MinimiseClicked);
    connect(cmdClose, &QToolButton::clicked, this, &CaptionBar::CloseClicked);
}

PictureButton *CaptionBar::AddButton(const char *name, const QIcon &picture, const QString &tip)
{
    auto *button = new PictureButton(QLatin1String(name), picture, tip, this);
    button->setFocusPolicy(Qt::NoFocus);
    button->setFixedSize(40, 28);
    connect(button, &QToolButton::released, this, &CaptionBar::Released);
    return button;
}

void CaptionBar::SetActive(bool active)
{
    m_active = active;
    m_title->setProperty("active", active);
    m_title->style()->unpolish(m_title);
    m_title->style()->polish(m_title);
    update();
}

void CaptionBar::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        Q_EMIT Dragged();
}

void CaptionBar::mouseReleaseEvent(QMouseEvent *)
{
    Q_EMIT Released();
}

void CaptionBar::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        Q_EMIT DoubleClicked();
}

void CaptionBar::paintEvent(QPaintEvent *)
{
    const CaptionLook look = m_active ? ActiveLook : InactiveLook;
    QLinearGradient fill(0, 0, 0, height());
    fill.setColorAt(0, look.top);
    fill.setColorAt(1, look.bottom);
    QPainter(this).fillRect(rect(), fill);
}

} // namespace wb
