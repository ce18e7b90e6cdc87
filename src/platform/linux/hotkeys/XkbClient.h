#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <optional>

namespace quillbar::platform {

/// Asks for XKB's presence without waiting; useXkb() later reads the answer.
void prefetchXkb(xcb_connection_t* connection);

/// Makes held keys repeat as presses without releases between, and has the server tell about
/// changes of the keyboard or its mapping. Returns the type of the events that tell it; none where
/// the server has no XKB.
[[nodiscard]] std::optional<std::uint8_t> useXkb(xcb_connection_t* connection);

/// The layout that is in use of those that the person has set up, counted from 0. Waits.
[[nodiscard]] std::uint8_t activeLayout(xcb_connection_t* connection);

} // namespace quillbar::platform
