#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <initializer_list>
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
    OtherClient();
    OtherClient(OtherClient const&) = delete;
    OtherClient& operator=(OtherClient const&) = delete;
    ~OtherClient();

    void press(std::uint8_t key);
    void release(std::uint8_t key);

    /// Presses the keys in this order and releases them in the opposite one.
    void tap(std::initializer_list<std::uint8_t> keys);

    /// Whether the server gave the key to this client.
    [[nodiscard]] bool grab(std::uint8_t key, std::uint16_t modifiers);

    /// Has this client be sent the keys that nobody grabbed and no window used.
    void watchUnusedKeys();

    /// The keys whose presses this client was sent since the last call.
    [[nodiscard]] std::vector<std::uint8_t> takePresses();

    /// Whether this client was sent a press of `key` since the last call.
    [[nodiscard]] bool gotPress(std::uint8_t key);

private:
    void fake(std::uint8_t type, std::uint8_t key);

    xcb_connection_t* connection_;
    xcb_window_t root_;
};

} // namespace quillbar::testing
