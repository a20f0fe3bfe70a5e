#include "windows/Compositing.h"

#include <QGuiApplication>

#include <cstdlib>
#include <memory>
#include <xcb/xcb.h>
#include <xcb/xfixes.h>

namespace velmor {

namespace {

/// What the X library hands out is released with `free`.
template <typename Reply> using Owned = std::unique_ptr<Reply, decltype(&std::free)>;

template <typename Reply> Owned<Reply> owned(Reply *reply)
{
    return {reply, &std::free};
}

xcb_connection_t *x11Connection()
{
    auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 ? x11->connection() : nullptr;
}

/// The selection that the compositing manager of the first screen owns; Qt uses that screen alone.
xcb_atom_t managerSelection(xcb_connection_t *connection)
{
    const QByteArray name = "_NET_WM_CM_S0";
    const auto reply = owned(xcb_intern_atom_reply(
        connection,
        xcb_intern_atom(connection, 0, static_cast<uint16_t>(name.size()), name.constData()),
        nullptr));
    return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
}

bool isOwned(xcb_connection_t *connection, xcb_atom_t selection)
{
    const auto reply = owned(xcb_get_selection_owner_reply(
        connection, xcb_get_selection_owner(connection, selection), nullptr));
    return reply && reply->owner != XCB_WINDOW_NONE;
}

} // namespace

Compositing::Compositing(QObject *parent) : QObject(parent)
{
    xcb_connection_t *connection = x11Connection();
    if (!connection)
        return;
    m_selection = managerSelection(connection);
    watchOwner();
    m_active = isOwned(connection, m_selection);
}

Compositing::~Compositing()
{
    if (m_ownerChangeEvent != 0)
        qGuiApp->removeNativeEventFilter(this);
}

void Compositing::watchOwner()
{
    xcb_connection_t *connection = x11Connection();
    const xcb_query_extension_reply_t *extension =
        xcb_get_extension_data(connection, &xcb_xfixes_id);
    if (!extension || !extension->present)
        return;
    const auto version = owned(xcb_xfixes_query_version_reply(
        connection, xcb_xfixes_query_version(connection, 1, 0), nullptr));
    const xcb_screen_t *screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
    if (!version || !screen)
        return;
    xcb_xfixes_select_selection_input(connection, screen->root, m_selection,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    m_ownerChangeEvent = static_cast<uint8_t>(extension->first_event + XCB_XFIXES_SELECTION_NOTIFY);
    qGuiApp->installNativeEventFilter(this);
}

bool Compositing::nativeEventFilter(const QByteArray &eventType, void *message, qintptr *)
{
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto *event = static_cast<xcb_generic_event_t *>(message);
    if ((event->response_type & 0x7F) != m_ownerChangeEvent)
        return false;
    const auto *change = static_cast<xcb_xfixes_selection_notify_event_t *>(message);
    if (change->selection == m_selection)
        setActive(change->owner != XCB_WINDOW_NONE);
    return false;
}

void Compositing::setActive(bool active)
{
    if (active == m_active)
        return;
    m_active = active;
    Q_EMIT activeChanged();
}

} // namespace velmor
