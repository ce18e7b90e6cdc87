#pragma once

#include "platform/KeyModifiers.h"
#include "platform/Token.h"

#include <cstdint>
#include <memory>

namespace quillbar::platform {

/// One way of claiming key combinations system-wide. Main thread.
class HotkeyBackend {
public:
    HotkeyBackend() = default;
    HotkeyBackend(HotkeyBackend const&) = delete;
    HotkeyBackend& operator=(HotkeyBackend const&) = delete;
    virtual ~HotkeyBackend() = default;

    /// Empty when the combination cannot be had. The token may outlive the back end.
    [[nodiscard]] virtual Token claim(
        std::uint32_t keyCode, KeyModifiers modifiers, std::uint32_t id)
        = 0;
};

} // namespace quillbar::platform
