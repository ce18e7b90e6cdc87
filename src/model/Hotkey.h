#pragma once

#include <cstdint>

namespace quillbar {

/// One key combination; `empty` stands for none.
struct Hotkey {
    /// Virtual key code in the macOS numbering, for example 17 for the T key.
    std::int64_t keyCode = 0;
    /// Bits of platform/KeyModifiers.h.
    std::uint32_t modifiers = 0;

    static Hotkey const empty;

    /// Key code 0 marks a hotkey that is not set, so the A key cannot be one.
    [[nodiscard]] bool isValid() const { return keyCode != 0; }

    friend bool operator==(Hotkey const&, Hotkey const&) = default;
};

inline constexpr Hotkey Hotkey::empty {};

} // namespace quillbar
