#include "widgets/picturearea.h"

#include "widgets/filedrop.h"
#include "widgets/panning.h"

#include <QDropEvent>
#include <QMouseEvent>
#include <QPainter>

namespace wb
{

class PictureCanvas : public QWidget
{
public:
    PictureCanvas(const QString &name, const QCursor &openHand, const QCursor &closedHand, PictureArea *area,
                  QWidget *inside)
        : QWidget(inside), m_area(area), m_openHand(openHand), m_closedHand(closedHand)
    {
        setObjectName(name);
        setAttribute(Qt::WA_OpaquePaintEvent);
    }

    bool SetImage(const QImage &image, QSize size)
    {
        if (size.width() > QWIDGETSIZE_MAX || size.height() > QWIDGETSIZE_MAX)
            return false;
        m_image = size.isEmpty() ? QImage() : image;
        m_size = size;
        Place();
        update();
        return true;
    }

    void SetBackColour(const QColor &colour)
    {
        m_back = colour;
        update();
    }

    // Takes the frame's inner size, grown to the picture's; a direction in which the picture fits goes back
    // to 0.
    void Place()
    {
        const QSize inner = m_area->InnerSize();
        resize(inner.expandedTo(m_size));
        move(m_size.width() > inner.width() ? x() : 0, m_size.height() > inner.height() ? y() : 0);
        ShowCursor();
    }

protected:
    void paintEvent(QPaintEvent *event) override
    {
        QPainter painter(this);
        painter.fillRect(event->rect(), m_back);
        if (!m_image.isNull())
            painter.drawImage(QRect(Centred(width(), m_size.width()), Centred(height(), m_size.height()),
                                    m_size.width(), m_size.height()),
                              m_image);
    }

    // The release of a button goes elsewhere while a box is open.
    void changeEvent(QEvent *event) override
    {
        QWidget::changeEvent(event);
        if (event->type() != QEvent::EnabledChange)
            return;
        m_isHeld = false;
        ShowCursor();
    }

    void mousePressEvent(QMouseEvent *event) override
    {
        if (event->button() != Qt::LeftButton)
            return;
        m_start = event->position().toPoint();
        m_isHeld = true;
        ShowCursor();
    }

    void mouseMoveEvent(QMouseEvent *event) override
    {
        if (!(event->buttons() & Qt::LeftButton))
            return;
        const QPoint proposed = pos() + event->position().toPoint() - m_start;
        const QSize inner = m_area->InnerSize();
        move(PannedEdge(x(), proposed.x(), width(), inner.width()),
             PannedEdge(y(), proposed.y(), height(), inner.height()));
    }

    void mouseReleaseEvent(QMouseEvent *event) override
    {
        if (event->button() != Qt::LeftButton)
            return;
        m_isHeld = false;
        ShowCursor();
        Q_EMIT m_area->Released();
    }

private:
    static int Centred(int outer, int length)
    {
        return length > 0 && length <= outer ? (outer - length) / 2 : 0;
    }

    void ShowCursor()
    {
        const QSize inner = m_area->InnerSize();
        const bool fits = m_size.width() <= inner.width() && m_size.height() <= inner.height();
        setCursor(m_isHeld ? m_closedHand : fits ? QCursor(Qt::ArrowCursor) : m_openHand);
    }

    PictureArea *m_area;
    QCursor m_openHand;
    QCursor m_closedHand;
    QImage m_image;
    QSize m_size;
    QColor m_back;
    QPoint m_start; // of a drag, in the picture
    bool m_isHeld = false;
};

PictureArea::PictureArea(const QString &name, const QCursor &openHand, const QCursor &closedHand,
                         QWidget *parent)
    : QWidget(parent), m_inside(new QWidget(this)),
      m_canvas(new PictureCanvas(name, openHand, closedHand, this, m_inside))
{
    setObjectName(name + QStringLiteral("Border"));
    setContentsMargins(1, 1, 1, 1);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setAcceptDrops(true);
}

void PictureArea::SetBackColour(const QColor &colour)
{
    m_canvas->SetBackColour(colour);
}

void PictureArea::ResetPlace()
{
    m_canvas->move(0, 0);
}

bool PictureArea::Show(const QImage &image, QSize size)
{
    return m_canvas->SetImage(image, size);
}

void PictureArea::Clear()
{
    m_canvas->SetImage({}, {});
}

void PictureArea::dragEnterEvent(QDragEnterEvent *event)
{
    AcceptFiles(*event);
}

void PictureArea::dropEvent(QDropEvent *event)
{
    if (AcceptFiles(*event))
        Q_EMIT FileDropped(DroppedFiles(*event).front());
}

void PictureArea::resizeEvent(QResizeEvent *)
{
    m_inside->setGeometry(contentsRect());
    m_canvas->Place();
}

void PictureArea::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setPen(palette().mid().color());
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

} // namespace wb
