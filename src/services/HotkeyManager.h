#pragma once

#include "platform/Token.h"

#include <cstdint>
#include <functional>
#include <map>
#include <string>

namespace quillbar {

/// Maps system-wide hotkeys to actions. One for the whole process; main thread.
class HotkeyManager {
public:
    HotkeyManager() = default;
    HotkeyManager(HotkeyManager const&) = delete;
    HotkeyManager& operator=(HotkeyManager const&) = delete;
    ~HotkeyManager() = default;

    /// Listens to the system's hotkeys; every call but the first does nothing.
    void install();

    /// Claims the combination and returns its id, counted from 1 and never used again; 0 when the
    /// system refuses it, which uses an id up too. `title` tells the person what it is for, where
    /// the system asks. What was refused is kept for retryRefused() until unregisterAll().
    std::uint32_t registerHotkey(std::function<void()> action, std::uint32_t keyCode,
        std::uint32_t modifiers, std::string const& title = {});

    /// Frees one combination; an unknown id does nothing.
    void unregister(std::uint32_t id);
    void unregisterAll();

    /// Claims what was refused and may be free now: systems do not report that another program gave
    /// a combination back. Costs nothing when nothing was refused.
    void retryRefused();

    /// Runs the action of `id`, if there is one. The action may unregister any hotkey, its own too.
    void trigger(std::uint32_t id);

private:
    struct Request {
        std::function<void()> action;
        std::uint32_t keyCode;
        std::uint32_t modifiers;
        std::string title;
    };

    bool claim(std::uint32_t id, Request const& request);

    std::map<std::uint32_t, platform::Token> refs_;
    std::map<std::uint32_t, std::function<void()>> actions_;
    std::map<std::uint32_t, Request> refused_;
    platform::Token obstacleObservation_;
    bool installed_ = false;
    std::uint32_t nextID_ = 1;
};

/// The process's one manager, made on first use.
[[nodiscard]] HotkeyManager& hotkeyManager();

} // namespace quillbar
