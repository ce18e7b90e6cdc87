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
    struct Variant;

    void buildUserInterface() override;
    void buildTexts(platform::View& content, Variant const& variant);
    void buildButtons(platform::View& content, Variant const& variant);
    void primaryTapped();
    void openShortcutsApp();
    void notNow();

    std::function<void()> const onPrimary_;
};

} // namespace quillbar
