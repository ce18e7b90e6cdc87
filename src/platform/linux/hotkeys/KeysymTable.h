#pragma once

#include "platform/linux/hotkeys/XcbPtr.h"

#include <xcb/xcb.h>

#include <cstdint>

namespace quillbar::platform {

/// What the keys give without modifiers in the layout that is in use now.
class KeysymTable {
public:
    /// Waits for the server.
    explicit KeysymTable(xcb_connection_t* connection);

    /// 0 for a key that gives nothing.
    [[nodiscard]] xcb_keysym_t of(xcb_keycode_t keycode) const;

private:
    XcbPtr<xcb_get_keyboard_mapping_reply_t> mapping_;
    xcb_keycode_t firstKeycode_;
    std::size_t layout_;
};

} // namespace quillbar::platform
