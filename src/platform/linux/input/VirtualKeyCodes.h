#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace quillbar::platform {

/// Stored hotkeys name physical keys by macOS virtual key codes, the kernel by evdev codes; an X
/// key code is the evdev code plus 8. All three are positions, so keyboard layouts do not matter.
///
/// Keys that no macOS key code names (media keys, F21 and up) have `firstEvdevKeyCode` plus their
/// evdev code.
inline constexpr std::uint32_t firstEvdevKeyCode = 0x10000;

/// The key that a virtual key code means, if there is one.
[[nodiscard]] std::optional<std::uint32_t> virtualKeyToEvdev(std::uint32_t keyCode);

/// Every key that a virtual key code means: PC keyboards have two for F13 to F15, since their
/// PrintScreen, ScrollLock and Pause count as these. Empty for an unknown code.
[[nodiscard]] std::vector<std::uint32_t> evdevKeysFor(std::uint32_t keyCode);

/// The virtual key code of a key; none for evdev codes beyond those of a keyboard.
[[nodiscard]] std::optional<std::uint32_t> evdevToVirtualKey(std::uint32_t evdevCode);

} // namespace quillbar::platform
