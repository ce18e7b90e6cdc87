#include "platform/linux/X11Connection.h"

#include "platform/linux/hotkeys/XcbPtr.h"

#include <QGuiApplication>

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

} // namespace quillbar::platform
