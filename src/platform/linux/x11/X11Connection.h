#pragma once

#include <QByteArray>
#include <xcb/xcb.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>

namespace quillbar::platform {

struct XcbDeleter {
    void operator()(void* reply) const { std::free(reply); }
};

/// A reply, event or error that xcb allocated.
template <typename Reply> using XcbPtr = std::unique_ptr<Reply, XcbDeleter>;

/// Qt's connection to the X server, which Qt owns; null in another session. Main thread.
[[nodiscard]] xcb_connection_t* x11Connection();

[[nodiscard]] xcb_window_t x11RootWindow(xcb_connection_t* connection);

/// Waits for the server, so its answer is worth keeping; XCB_ATOM_NONE when the server is gone.
[[nodiscard]] xcb_atom_t x11Atom(xcb_connection_t* connection, std::string_view name);

/// Asks the window manager something about `window`, by a client message to the root window.
void askWindowManager(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t message,
    std::array<std::uint32_t, 2> data = {});

/// What a native event filter was given by the X server; null when it came from elsewhere.
[[nodiscard]] xcb_generic_event_t const* x11Event(QByteArray const& filterType, void* message);

/// XCB_CLIENT_MESSAGE and the like, whether the server or another client sent the event.
[[nodiscard]] int x11EventType(xcb_generic_event_t const& event);

} // namespace quillbar::platform
