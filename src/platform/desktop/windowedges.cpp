#include "platform/desktop/windowedges.h"

#include "platform/desktop/windows.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QWidget>
#include <QWindow>

namespace wb
{

namespace
{

constexpr int GripWidth = 5; // pixels

Qt::CursorShape PointerOf(Qt::Edges edges)
{
    const bool horizontal = edges & (Qt::LeftEdge | Qt::RightEdge);
    const bool vertical = edges & (Qt::TopEdge | Qt::BottomEdge);
    if (horizontal && vertical) {
        const bool falling = edges.testFlag(Qt::LeftEdge) == edges.testFlag(Qt::TopEdge);
        return falling ? Qt::SizeFDiagCursor : Qt::SizeBDiagCursor;
    }
    return horizontal ? Qt::SizeHorCursor : Qt::SizeVerCursor;
}

} // namespace

WindowEdges::WindowEdges(QWidget &window) : QObject(&window), m_window(window)
{
    window.windowHandle()->installEventFilter(this);
}

WindowEdges::~WindowEdges()
{
    ShowPointer({});
}

Qt::Edges WindowEdges::EdgesAt(QPointF position) const
{
    Qt::Edges edges;
    if (m_window.isMaximized() || m_window.isFullScreen())
        return edges;
    edges.setFlag(Qt::LeftEdge, position.x() < GripWidth);
    edges.setFlag(Qt::RightEdge, position.x() >= m_window.width() - GripWidth);
    edges.setFlag(Qt::TopEdge, position.y() < GripWidth);
    edges.setFlag(Qt::BottomEdge, position.y() >= m_window.height() - GripWidth);
    return edges;
}

// The pointer is the application's while it lies on an edge, because every widget there sets its own.
void WindowEdges::ShowPointer(Qt::Edges edges)
{
    if (edges == m_shown)
        return;
    if (m_shown)
        QGuiApplication::restoreOverrideCursor();
    if (edges)
        QGuiApplication::setOverrideCursor(PointerOf(edges));
    m_shown = edges;
}

bool WindowEdges::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Leave) {
        ShowPointer({});
    } else if (event->type() == QEvent::MouseMove || event->type() == QEvent::MouseButtonPress) {
        const auto *mouse = static_cast<QMouseEvent *>(event);
        const bool pressing = event->type() == QEvent::MouseButtonPress;
        if (pressing || mouse->buttons() == Qt::NoButton)
            ShowPointer(EdgesAt(mouse->position()));
        if (pressing && mouse->button() == Qt::LeftButton && m_shown)
            return StartWindowResize(m_window, m_shown);
    }
    return QObject::eventFilter(watched, event);
}

} // namespace wb
