#pragma once

#include <cstdint>

namespace quillbar::platform {

/// A set of modifier keys: the sum of the bits below, which are those of stored hotkeys.
using KeyModifiers = std::uint32_t;

inline constexpr KeyModifiers commandKey = 0x100;
inline constexpr KeyModifiers shiftKey = 0x200;
inline constexpr KeyModifiers optionKey = 0x800;
inline constexpr KeyModifiers controlKey = 0x1000;

} // namespace quillbar::platform
