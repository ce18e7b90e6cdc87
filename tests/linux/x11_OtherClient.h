#pragma once

#include "platform/linux/x11/X11Connection.h"

#include <xcb/xcb.h>
#include <xcb/xinput.h>
#include <xcb/xtest.h>

#include <algorithm>
#include <cstdint>
#include <vector>

namespace quillbar::testing {

/// X key codes of a PC keyboard.
enum Key : std::uint8_t {
    keyS = 39,
    keyT = 28,
    keyControl = 37,
    keyShift = 50,
    keyAlt = 64,
    keyCapsLock = 66,
    keyNumLock = 77,
    keyPrintScreen = 107,
    keyF13 = 191,
    keySuper = 133,
};

/// Another program on the same display: it types, and grabs keys for itself.
class OtherClient {
public:
    OtherClient() = default;
    OtherClient(OtherClient const&) = delete;
    OtherClient& operator=(OtherClient const&) = delete;
    ~OtherClient() { xcb_disconnect(connection_); }

    void press(std::uint8_t key) { fake(XCB_KEY_PRESS, key); }
    void release(std::uint8_t key) { fake(XCB_KEY_RELEASE, key); }

    /// Presses the keys in this order and releases them in the opposite one.
    void tap(std::vector<std::uint8_t> const& keys)
    {
        for (auto const key : keys)
            press(key);
        std::for_each(keys.rbegin(), keys.rend(), [this](auto key) { release(key); });
    }

    /// Whether the server gave the key to this client.
    [[nodiscard]] bool grab(std::uint8_t key, std::uint16_t modifiers)
    {
        return isDone(xcb_grab_key_checked(
            connection_, 0, root_, modifiers, key, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    }

    /// The same by the X Input Extension, as Mutter and Muffin do.
    [[nodiscard]] bool grabDevice(std::uint8_t key, std::uint32_t modifiers)
    {
        constexpr xcb_input_device_id_t coreKeyboard = 3;
        std::uint32_t const events = XCB_INPUT_XI_EVENT_MASK_KEY_PRESS;
        auto const request = xcb_input_xi_passive_grab_device(connection_, XCB_CURRENT_TIME, root_,
            XCB_CURSOR_NONE, key, coreKeyboard, 1, 1, XCB_INPUT_GRAB_TYPE_KEYCODE,
            XCB_INPUT_GRAB_MODE_22_ASYNC, XCB_INPUT_GRAB_MODE_22_ASYNC,
            XCB_INPUT_GRAB_OWNER_NO_OWNER, &events, &modifiers);
        platform::XcbPtr<xcb_input_xi_passive_grab_device_reply_t> const reply {
            xcb_input_xi_passive_grab_device_reply(connection_, request, nullptr)
        };
        return reply && reply->num_modifiers == 0;
    }

    /// Has this client be sent the keys that nobody grabbed and no window used.
    void watchUnusedKeys()
    {
        std::uint32_t const events = XCB_EVENT_MASK_KEY_PRESS;
        isDone(
            xcb_change_window_attributes_checked(connection_, root_, XCB_CW_EVENT_MASK, &events));
    }

    /// The keys whose presses this client was sent since the last call.
    [[nodiscard]] std::vector<std::uint8_t> takePresses()
    {
        std::vector<std::uint8_t> keys;
        while (
            platform::XcbPtr<xcb_generic_event_t> const event { xcb_poll_for_event(connection_) }) {
            if (event->response_type == XCB_KEY_PRESS)
                keys.push_back(reinterpret_cast<xcb_key_press_event_t const&>(*event).detail);
        }
        return keys;
    }

private:
    /// Returns once the server has carried the request out, or refused it.
    bool isDone(xcb_void_cookie_t request)
    {
        platform::XcbPtr<xcb_generic_error_t> const error { xcb_request_check(
            connection_, request) };
        return error == nullptr;
    }

    void fake(std::uint8_t type, std::uint8_t key)
    {
        isDone(
            xcb_test_fake_input_checked(connection_, type, key, XCB_CURRENT_TIME, root_, 0, 0, 0));
    }

    xcb_connection_t* connection_ = xcb_connect(nullptr, nullptr);
    xcb_window_t root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
};

} // namespace quillbar::testing
