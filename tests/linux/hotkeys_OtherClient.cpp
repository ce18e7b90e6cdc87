#include "linux/hotkeys_OtherClient.h"

#include "platform/linux/hotkeys/XcbPtr.h"

#include <xcb/xtest.h>

#include <algorithm>

namespace quillbar::testing {

using platform::XcbPtr;

OtherClient::OtherClient()
    : connection_(xcb_connect(nullptr, nullptr))
    , root_(xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root)
{
}

OtherClient::~OtherClient()
{
    xcb_disconnect(connection_);
}

void OtherClient::fake(std::uint8_t type, std::uint8_t key)
{
    auto const cookie
        = xcb_test_fake_input_checked(connection_, type, key, XCB_CURRENT_TIME, root_, 0, 0, 0);
    XcbPtr<xcb_generic_error_t> const error { xcb_request_check(connection_, cookie) };
}

void OtherClient::press(std::uint8_t key)
{
    fake(XCB_KEY_PRESS, key);
}

void OtherClient::release(std::uint8_t key)
{
    fake(XCB_KEY_RELEASE, key);
}

void OtherClient::tap(std::initializer_list<std::uint8_t> keys)
{
    std::vector<std::uint8_t> order { keys };
    for (auto const key : order)
        press(key);
    std::reverse(order.begin(), order.end());
    for (auto const key : order)
        release(key);
}

bool OtherClient::grab(std::uint8_t key, std::uint16_t modifiers)
{
    auto const cookie = xcb_grab_key_checked(
        connection_, 0, root_, modifiers, key, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    XcbPtr<xcb_generic_error_t> const error { xcb_request_check(connection_, cookie) };
    return error == nullptr;
}

void OtherClient::watchUnusedKeys()
{
    std::uint32_t const events = XCB_EVENT_MASK_KEY_PRESS;
    auto const cookie
        = xcb_change_window_attributes_checked(connection_, root_, XCB_CW_EVENT_MASK, &events);
    XcbPtr<xcb_generic_error_t> const error { xcb_request_check(connection_, cookie) };
}

std::vector<std::uint8_t> OtherClient::takePresses()
{
    std::vector<std::uint8_t> keys;
    while (XcbPtr<xcb_generic_event_t> const event { xcb_poll_for_event(connection_) }) {
        if (event->response_type == XCB_KEY_PRESS)
            keys.push_back(reinterpret_cast<xcb_key_press_event_t const&>(*event).detail);
    }
    return keys;
}

bool OtherClient::gotPress(std::uint8_t key)
{
    auto const keys = takePresses();
    return std::find(keys.begin(), keys.end(), key) != keys.end();
}

} // namespace quillbar::testing
