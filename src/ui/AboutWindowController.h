#pragma once

#include "platform/view/Image.h"
#include "platform/view/View.h"
#include "ui/WindowController.h"

namespace quillbar {

/// Shows what Quillbar is, its version and who makes it.
class AboutWindowController : public WindowController {
public:
    AboutWindowController();

    /// The application's icon as a square with edges of that many points: the bundle's own, else
    /// one drawn here. Ends the program on a system without a heart symbol.
    [[nodiscard]] static platform::Image appIcon(double size);
    static void addIcon(platform::View& content, double x, double y, double size);

private:
    void buildUserInterface() override;
};

} // namespace quillbar
