#include "platform/linux/x11/XInputGrabs.h"

#include "platform/linux/x11/X11Connection.h"

namespace quillbar::platform {

namespace {

// The X server gives the first keyboard that windows know of this number. A press that was grabbed
// for all such keyboards together is lost when it is replayed.
constexpr xcb_input_device_id_t coreKeyboard = 3;

} // namespace

XInputGrabs::XInputGrabs(xcb_connection_t* connection, xcb_window_t root)
    : connection_(connection)
    , root_(root)
{
    auto const* const extension = xcb_get_extension_data(connection, &xcb_input_id);
    if (extension == nullptr || extension->present == 0)
        return;
    constexpr std::uint16_t minorVersion = 2;
    auto const version
        = xcb_input_xi_query_version(connection, XCB_INPUT_MAJOR_VERSION, minorVersion);
    xcb_discard_reply(connection, version.sequence);
    opcode_ = extension->major_opcode;
}

XInputGrabs::Cookie XInputGrabs::grabAndRelease(xcb_keycode_t keycode, std::uint16_t mask) const
{
    std::uint32_t const modifiers = mask;
    std::uint32_t const events = XCB_INPUT_XI_EVENT_MASK_KEY_PRESS;
    auto const cookie
        = xcb_input_xi_passive_grab_device(connection_, XCB_CURRENT_TIME, root_, XCB_CURSOR_NONE,
            keycode, coreKeyboard, 1, 1, XCB_INPUT_GRAB_TYPE_KEYCODE, XCB_INPUT_GRAB_MODE_22_SYNC,
            XCB_INPUT_GRAB_MODE_22_ASYNC, XCB_INPUT_GRAB_OWNER_NO_OWNER, &events, &modifiers);
    xcb_input_xi_passive_ungrab_device(
        connection_, root_, keycode, coreKeyboard, 1, XCB_INPUT_GRAB_TYPE_KEYCODE, &modifiers);
    return cookie;
}

bool XInputGrabs::isTaken(Cookie cookie) const
{
    XcbPtr<xcb_input_xi_passive_grab_device_reply_t> const refused {
        xcb_input_xi_passive_grab_device_reply(connection_, cookie, nullptr)
    };
    return refused && refused->num_modifiers > 0;
}

void XInputGrabs::passOn(xcb_generic_event_t const& event) const
{
    auto const& press = reinterpret_cast<xcb_input_key_press_event_t const&>(event);
    if (press.extension != opcode_ || press.event_type != XCB_INPUT_KEY_PRESS)
        return;
    xcb_input_xi_allow_events(connection_, XCB_CURRENT_TIME, press.deviceid,
        XCB_INPUT_EVENT_MODE_REPLAY_DEVICE, 0, XCB_WINDOW_NONE);
    xcb_flush(connection_);
}

} // namespace quillbar::platform
