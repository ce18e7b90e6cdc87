#pragma once

#include "platform/Fatal.h"

#include <cstdint>
#include <utility>

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

    /// The key code as the system takes it. Ends the program for one outside 0 … 2³²−1.
    [[nodiscard]] std::uint32_t systemKeyCode() const
    {
        if (!std::in_range<std::uint32_t>(keyCode))
            platform::fatalError("a hotkey's key code is negative or too large");
        return static_cast<std::uint32_t>(keyCode);
    }

    friend bool operator==(Hotkey const&, Hotkey const&) = default;
};

inline constexpr Hotkey Hotkey::empty {};

} // namespace quillbar
