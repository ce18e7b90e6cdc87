#pragma once

#include <xcb/xcb.h>

#include <string_view>

namespace quillbar::platform {

/// Qt's connection to the X server, which Qt owns; null in another session. Main thread.
[[nodiscard]] xcb_connection_t* x11Connection();

[[nodiscard]] xcb_window_t x11RootWindow(xcb_connection_t* connection);

/// Waits for the server, so its answer is worth keeping; XCB_ATOM_NONE when the server is gone.
[[nodiscard]] xcb_atom_t x11Atom(xcb_connection_t* connection, std::string_view name);

} // namespace quillbar::platform
