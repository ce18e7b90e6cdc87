#include "platform/linux/hotkeys/XkbClient.h"

#include "platform/linux/hotkeys/XcbPtr.h"

// The header has a field called "explicit".
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit

namespace quillbar::platform {

void prefetchXkb(xcb_connection_t* connection)
{
    xcb_prefetch_extension_data(connection, &xcb_xkb_id);
}

std::optional<std::uint8_t> useXkb(xcb_connection_t* connection)
{
    auto const* const extension = xcb_get_extension_data(connection, &xcb_xkb_id);
    if (extension == nullptr || extension->present == 0)
        return std::nullopt;

    auto const version
        = xcb_xkb_use_extension(connection, XCB_XKB_MAJOR_VERSION, XCB_XKB_MINOR_VERSION);
    auto const flags = xcb_xkb_per_client_flags(connection, XCB_XKB_ID_USE_CORE_KBD,
        XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT,
        XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT, 0, 0, 0);
    xcb_discard_reply(connection, version.sequence);
    xcb_discard_reply(connection, flags.sequence);

    std::uint16_t const changes
        = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
    xcb_xkb_select_events(connection, XCB_XKB_ID_USE_CORE_KBD, changes, 0, changes, 0, 0, nullptr);
    return extension->first_event;
}

std::uint8_t activeLayout(xcb_connection_t* connection)
{
    XcbPtr<xcb_xkb_get_state_reply_t> const state { xcb_xkb_get_state_reply(
        connection, xcb_xkb_get_state(connection, XCB_XKB_ID_USE_CORE_KBD), nullptr) };
    return state ? state->group : std::uint8_t { 0 };
}

} // namespace quillbar::platform
