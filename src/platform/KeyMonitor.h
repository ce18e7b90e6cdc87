#pragma once

#include "platform/KeyModifiers.h"
#include "platform/Token.h"

#include <cstdint>
#include <functional>

namespace quillbar::platform {

/// The press of one key, not of a modifier alone. The key code is a macOS virtual key code: it
/// names the physical key, whatever the layout writes on it.
struct KeyEvent {
    std::uint32_t keyCode = 0;
    KeyModifiers modifiers = 0;

    friend bool operator==(KeyEvent const&, KeyEvent const&) = default;
};

/// The key codes that the windows themselves answer to.
namespace key {
inline constexpr std::uint32_t returnKey = 36;
inline constexpr std::uint32_t tab = 48;
inline constexpr std::uint32_t space = 49;
inline constexpr std::uint32_t escape = 53;
inline constexpr std::uint32_t keypadEnter = 76;
inline constexpr std::uint32_t leftArrow = 123;
inline constexpr std::uint32_t rightArrow = 124;
inline constexpr std::uint32_t downArrow = 125;
inline constexpr std::uint32_t upArrow = 126;
} // namespace key

enum class KeyEventResult : std::uint8_t { Pass, Consume };

enum class KeyMonitorReach : std::uint8_t {
    /// The key presses that the system delivers to this program.
    Application,
    /// Also combinations that the system would keep, as long as a window of this program is the
    /// key window.
    GrabKeyboard,
};

using KeyDownHandler = std::function<KeyEventResult(KeyEvent const&)>;

/// Shows `handler` every key press of this program's windows before it reaches its target; a
/// consumed press goes no further. The newest monitor comes first. A handler may remove any
/// monitor, its own too, and may close windows. Removed with the token. Main thread.
[[nodiscard]] Token addKeyDownMonitor(
    KeyDownHandler handler, KeyMonitorReach reach = KeyMonitorReach::Application);

/// The backend's entry for a key press: shows it to the monitors.
[[nodiscard]] KeyEventResult runKeyDownMonitors(KeyEvent const& event);

/// Whether there is a monitor with KeyMonitorReach::GrabKeyboard.
[[nodiscard]] bool isKeyboardGrabWanted();

/// The backend's part: called whenever isKeyboardGrabWanted() has changed.
void syncKeyboardGrab();

} // namespace quillbar::platform
