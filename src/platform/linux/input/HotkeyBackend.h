#pragma once

#include "platform/HotkeyObstacles.h"
#include "platform/KeyModifiers.h"
#include "platform/Token.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quillbar::platform {

/// One way of claiming key combinations system-wide. Main thread.
class HotkeyBackend {
public:
    HotkeyBackend() = default;
    HotkeyBackend(HotkeyBackend const&) = delete;
    HotkeyBackend& operator=(HotkeyBackend const&) = delete;
    virtual ~HotkeyBackend() = default;

    /// Empty when the combination cannot be claimed. The token may outlive the back end. `title` is
    /// what the hotkey is for.
    [[nodiscard]] virtual Token claim(
        std::uint32_t keyCode, KeyModifiers modifiers, std::uint32_t id, std::string const& title)
        = 0;

    /// What keeps each of the combinations from working, in their order; see hotkeyObstacles().
    [[nodiscard]] virtual std::vector<std::optional<HotkeyObstacle>> obstacles(
        std::vector<KeyCombination> const& combinations)
        = 0;

    /// What the keyboard calls each of the keys, in their order; empty where that is unknown.
    [[nodiscard]] virtual std::vector<std::string> keyNames(
        std::vector<std::uint32_t> const& keyCodes)
    {
        return std::vector<std::string>(keyCodes.size());
    }

    /// To be called whenever the answers of obstacles() may have changed.
    std::function<void()> onObstaclesChange;
};

} // namespace quillbar::platform
