#include "platform/desktop/windows.h"

#include <QGuiApplication>
#include <QWidget>
#include <QWindow>

#include <cstdlib>
#include <memory>
#include <string_view>
#include <xcb/xcb.h>

namespace wb
{

namespace
{

// Null on other window systems.
xcb_connection_t *X11Connection()
{
    auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 == nullptr ? nullptr : x11->connection();
}

template <typename Reply>
using ReplyOf = std::unique_ptr<Reply, decltype(&std::free)>;

// XCB_ATOM_NONE for a name that nobody has used.
xcb_atom_t AtomOf(xcb_connection_t *connection, std::string_view name)
{
    const auto cookie = xcb_intern_atom(connection, 1, static_cast<std::uint16_t>(name.size()), name.data());
    const ReplyOf<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection, cookie, nullptr),
                                                 &std::free);
    return reply == nullptr ? xcb_atom_t(XCB_ATOM_NONE) : reply->atom;
}

} // namespace

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
    xcb_connection_t *connection = X11Connection();
    if (connection == nullptr || window.windowHandle() == nullptr)
        return;
    // Extended Window Manager Hints 1.5, _NET_WM_MOVERESIZE.
    constexpr std::uint32_t MoveResizeCancel = 11;
    const xcb_atom_t atom = AtomOf(connection, "_NET_WM_MOVERESIZE");
    if (atom == XCB_ATOM_NONE)
        return;
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = static_cast<xcb_window_t>(window.winId());
    message.type = atom;
    message.data.data32[2] = MoveResizeCancel;
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    xcb_send_event(connection, 0, root,
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char *>(&message));
    xcb_flush(connection);
}

bool IsComposited()
{
    xcb_connection_t *connection = X11Connection();
    if (connection == nullptr)
        return true;
    // Extended Window Manager Hints 1.5: a compositor owns this selection, of the first screen.
    const xcb_atom_t atom = AtomOf(connection, "_NET_WM_CM_S0");
    if (atom == XCB_ATOM_NONE)
        return false;
    const auto cookie = xcb_get_selection_owner(connection, atom);
    const ReplyOf<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(connection, cookie, nullptr), &std::free);
    return reply != nullptr && reply->owner != XCB_WINDOW_NONE;
}

} // namespace wb
