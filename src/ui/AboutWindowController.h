#pragma once

#include "platform/view/Image.h"
#include "ui/WindowController.h"

namespace quillbar {

/// Shows what Quillbar is, its version and who makes it; owns the application's icon.
class AboutWindowController : public WindowController {
public:
    AboutWindowController();

    /// The application's icon in a square of `size` points: the bundle's own, else the drawn one.
    [[nodiscard]] static platform::Image appIcon(double size);

    /// The drawn icon: a white heart on a rounded square. Ends the program on a system without a
    /// heart.
    [[nodiscard]] static platform::Image makeIcon(double size);

private:
    void buildUserInterface() override;
    void buildTexts(platform::View& content);
    void buildLinks(platform::View& content);
    void openSupport();
    void openProfile();
};

} // namespace quillbar
