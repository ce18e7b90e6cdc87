#pragma once

#include "ui/WindowController.h"

#include <functional>

namespace quillbar {

/// Shown on the first launch: leads to the settings window or, when the tool lists no shortcut, to
/// the program that makes them.
class WelcomeWindowController : public WindowController {
public:
    /// `onPrimary` is called after the window has closed, where there are shortcuts to pin.
    explicit WelcomeWindowController(std::function<void()> onPrimary);

private:
    void buildUserInterface() override;
    void pickShortcuts();

    std::function<void()> const onPrimary_;
};

} // namespace quillbar
