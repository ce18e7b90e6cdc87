#pragma once

#include <xcb/xcb.h>
#include <xcb/xinput.h>

#include <cstdint>

namespace quillbar::platform {

/// Passive grabs of the X Input Extension, which some window managers hold instead of those of the
/// core protocol. The server lets both kinds take the same key and calls it no conflict.
class XInputGrabs {
public:
    using Cookie = xcb_input_xi_passive_grab_device_cookie_t;

    XInputGrabs(xcb_connection_t* connection, xcb_window_t root);

    /// Without the extension nobody can hold such grabs, and nothing may be asked.
    [[nodiscard]] bool isAvailable() const { return opcode_ != 0; }

    /// Does not wait for the server.
    [[nodiscard]] Cookie grabAndRelease(xcb_keycode_t keycode, std::uint16_t mask) const;

    /// The answer: whether another client holds it. Waits.
    [[nodiscard]] bool isTaken(Cookie cookie) const;

    /// Replays a key that was pressed between the grab and its release, when the event is one, so
    /// that the window that has the keyboard receives it.
    void passOn(xcb_generic_event_t const& event) const;

private:
    xcb_connection_t* connection_;
    xcb_window_t root_;
    std::uint8_t opcode_ = 0;
};

} // namespace quillbar::platform
