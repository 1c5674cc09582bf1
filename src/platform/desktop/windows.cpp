#include "platform/desktop/windows.h"

#include <QGuiApplication>
#include <QWidget>
#include <QWindow>

#include <cstdlib>
#include <memory>
#include <xcb/xcb.h>

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

void CancelWindowMove(const QWidget &window)
{
    if (QGuiApplication::platformName() != QStringLiteral("xcb") || window.windowHandle() == nullptr)
        return;
    // Extended Window Manager Hints 1.5, _NET_WM_MOVERESIZE.
    constexpr char Name[] = "_NET_WM_MOVERESIZE";
    constexpr std::uint32_t MoveResizeCancel = 11;
    xcb_connection_t *connection =
        qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
    const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> atom(
        xcb_intern_atom_reply(connection, xcb_intern_atom(connection, 1, sizeof(Name) - 1, Name), nullptr),
        &std::free);
    if (atom == nullptr || atom->atom == XCB_ATOM_NONE)
        return;
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = static_cast<xcb_window_t>(window.winId());
    message.type = atom->atom;
    message.data.data32[2] = MoveResizeCancel;
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    xcb_send_event(connection, 0, root,
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char *>(&message));
    xcb_flush(connection);
}

} // namespace wb
