#include "platform/linux/hotkeys/KeysymTable.h"

#include "platform/linux/hotkeys/XkbClient.h"

#include <algorithm>
#include <span>

namespace quillbar::platform {

namespace {

/// The core protocol gives the first two keysyms of the first two layouts, in this order.
constexpr std::size_t keysymsPerLayout = 2;
constexpr std::size_t knownLayouts = 2;

} // namespace

KeysymTable::KeysymTable(xcb_connection_t* connection)
    : firstKeycode_(xcb_get_setup(connection)->min_keycode)
{
    auto const count = xcb_get_setup(connection)->max_keycode - firstKeycode_ + 1;
    auto const request
        = xcb_get_keyboard_mapping(connection, firstKeycode_, static_cast<std::uint8_t>(count));
    layout_ = activeLayout(connection);
    mapping_.reset(xcb_get_keyboard_mapping_reply(connection, request, nullptr));
}

xcb_keysym_t KeysymTable::of(xcb_keycode_t keycode) const
{
    if (!mapping_ || keycode < firstKeycode_)
        return XCB_NO_SYMBOL;
    std::span const keysyms { xcb_get_keyboard_mapping_keysyms(mapping_.get()),
        static_cast<std::size_t>(xcb_get_keyboard_mapping_keysyms_length(mapping_.get())) };
    std::size_t const perKey = mapping_->keysyms_per_keycode;
    auto const first = static_cast<std::size_t>(keycode - firstKeycode_) * perKey;
    auto const column = layout_ < knownLayouts ? layout_ * keysymsPerLayout : 0;
    if (column < perKey && first + column < keysyms.size()
        && keysyms[first + column] != XCB_NO_SYMBOL)
        return keysyms[first + column];
    // Most keys that are no letters are the same in every layout.
    return first < keysyms.size() ? keysyms[first] : xcb_keysym_t { XCB_NO_SYMBOL };
}

} // namespace quillbar::platform
