#include "platform/linux/x11/X11Connection.h"

#include <QGuiApplication>

#include <algorithm>

namespace quillbar::platform {

xcb_connection_t* x11Connection()
{
    auto const* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 ? x11->connection() : nullptr;
}

xcb_window_t x11RootWindow(xcb_connection_t* connection)
{
    return xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
}

xcb_atom_t x11Atom(xcb_connection_t* connection, std::string_view name)
{
    auto const request
        = xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data());
    XcbPtr<xcb_intern_atom_reply_t> const reply { xcb_intern_atom_reply(
        connection, request, nullptr) };
    return reply ? reply->atom : xcb_atom_t { XCB_ATOM_NONE };
}

void askWindowManager(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t message,
    std::array<std::uint32_t, 2> data)
{
    xcb_client_message_event_t event {};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = message;
    std::ranges::copy(data, event.data.data32);
    xcb_send_event(connection, 0, x11RootWindow(connection),
        XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
        reinterpret_cast<char const*>(&event));
    xcb_flush(connection);
}

xcb_generic_event_t const* x11Event(QByteArray const& filterType, void* message)
{
    return filterType == "xcb_generic_event_t" ? static_cast<xcb_generic_event_t const*>(message)
                                               : nullptr;
}

int x11EventType(xcb_generic_event_t const& event)
{
    constexpr int sentByAClient = 0x80;
    return event.response_type & ~sentByAClient;
}

} // namespace quillbar::platform
