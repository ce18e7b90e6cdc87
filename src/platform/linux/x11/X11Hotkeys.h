#pragma once

#include "platform/linux/input/HotkeyBackend.h"
#include "platform/linux/x11/FocusWait.h"
#include "platform/linux/x11/KeyEventThread.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Keyboard.h"
#include "platform/linux/x11/XInputGrabs.h"

#include <QObject>
#include <xcb/xcb.h>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace quillbar::platform {

/// Hotkeys as passive grabs on the root window, over an X connection of its own.
///
/// The server keeps back what is typed after a hotkey's press until the press is dealt with: when
/// the handler opened a window, until that has the keyboard. So nothing typed blindly goes astray.
class X11Hotkeys final : public HotkeyBackend, public std::enable_shared_from_this<X11Hotkeys> {
public:
    using PressHandler = std::function<void(std::uint32_t id)>;

    /// Null without a usable X server.
    [[nodiscard]] static std::shared_ptr<X11Hotkeys> connect(PressHandler onPressed);

    ~X11Hotkeys() override = default;

    [[nodiscard]] Token claim(std::uint32_t keyCode, KeyModifiers modifiers, std::uint32_t id,
        std::string const& title) override;
    [[nodiscard]] std::vector<std::optional<HotkeyObstacle>> obstacles(
        std::vector<KeyCombination> const& combinations) override;
    [[nodiscard]] std::vector<std::string> keyNames(
        std::vector<std::uint32_t> const& keyCodes) override;

private:
    struct Disconnect {
        void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
    };
    using Connection = std::unique_ptr<xcb_connection_t, Disconnect>;

    struct Claim {
        std::vector<xcb_keycode_t> keycodes;
        KeyModifiers modifiers;
        std::uint32_t id;
        /// Whether the server gave us its grabs.
        bool isHeld = false;
    };
    struct Grab {
        xcb_keycode_t keycode;
        std::uint16_t mask;
    };

    X11Hotkeys(Connection connection, xcb_window_t root, PressHandler onPressed);

    struct Requests {
        std::vector<xcb_void_cookie_t> grabs;
        std::vector<XInputGrabs::Cookie> cookies;
    };

    [[nodiscard]] bool startListening();
    [[nodiscard]] static Claim makeClaim(
        std::uint32_t keyCode, KeyModifiers modifiers, std::uint32_t id);
    [[nodiscard]] std::vector<Grab> grabsOf(Claim const& claim) const;
    [[nodiscard]] bool isHeld(Claim const& claim) const;
    [[nodiscard]] Requests sendXInputGrabs(Claim const& claim) const;
    [[nodiscard]] Requests sendGrabs(Claim const& claim);
    [[nodiscard]] bool isAnyRefused(Requests const& sent);
    /// Whether somebody else holds a part of each claim.
    [[nodiscard]] std::vector<bool> tryGrabs(std::vector<Claim> const& claims);
    [[nodiscard]] bool grab(Claim const& claim);
    void ungrab(Claim const& claim);
    void regainLost();
    void release(std::uint64_t number);
    [[nodiscard]] bool takeOverReleased(Claim const& claim);
    void giveBackReleased();
    [[nodiscard]] Claim const* claimOf(xcb_keycode_t keycode, std::uint16_t mask) const;

    void keyPressed(xcb_key_press_event_t const& event);
    void keyReleased(xcb_keycode_t keycode);
    void fire(Claim const& claim);
    void handlerDone();
    void followKeyboard();

    Connection connection_;
    xcb_window_t root_;
    PressHandler onPressed_;
    /// What is left for the main queue's next turn ends with it.
    QObject context_;
    XInputGrabs xInputGrabs_;
    ModifierBits bits_;
    std::map<std::uint64_t, Claim> claims_;
    std::uint64_t nextNumber_ = 1;
    /// Grabs that nobody claims any more, until the main queue's next turn.
    std::vector<Claim> released_;
    std::set<xcb_keycode_t> held_;
    xcb_keycode_t grabbingKey_ = 0;
    KeyModifiers firedModifiers_ = 0;
    bool isHandlerRunning_ = false;
    std::optional<KeyEventThread> events_;
    FocusWait focusWait_ { [this] { events_->answer(XCB_ALLOW_SYNC_KEYBOARD); } };
};

} // namespace quillbar::platform
