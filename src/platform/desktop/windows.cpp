#include "platform/desktop/windows.h"

#include <QGuiApplication>
#include <QWidget>
#include <QWindow>

namespace wb
{

void SetTopMost(QWidget &window, bool topMost)
{
    QWindow *handle = window.windowHandle();
    if (handle == nullptr || handle->flags().testFlag(Qt::WindowStaysOnTopHint) == topMost)
        return;
    // Through the QWindow, because QWidget::setWindowFlags would hide the window; the widget is told
    // afterwards.
    handle->setFlag(Qt::WindowStaysOnTopHint, topMost);
    window.overrideWindowFlags(handle->flags());
}

bool IsForeground(const QWidget &window)
{
    return window.windowHandle() != nullptr && QGuiApplication::focusWindow() == window.windowHandle();
}

bool StartWindowMove(QWidget &window)
{
    return window.windowHandle() != nullptr && window.windowHandle()->startSystemMove();
}

bool StartWindowResize(QWidget &window, Qt::Edges edges)
{
    return window.windowHandle() != nullptr && window.windowHandle()->startSystemResize(edges);
}

} // namespace wb
