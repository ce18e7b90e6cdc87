#pragma once

#include <cstdint>
#include <string>

namespace quillbar {

/// The control that records a hotkey, and the one formatter of a hotkey as text.
class HotkeyRecorder {
public:
    /// For example "⌘⌥·17". Ends the program for a key code outside 0 … 2³²−1.
    [[nodiscard]] static std::string label(std::int64_t keyCode, std::uint32_t modifiers);
};

} // namespace quillbar
