#pragma once

#include "platform/view/Window.h"

namespace quillbar {

/// The borderless panel of the palette. It takes the keyboard in spite of having no title bar.
class PalettePanel : public platform::Panel {
public:
    using Panel::Panel;

    [[nodiscard]] bool canBecomeKeyWindow() const override { return true; }
};

} // namespace quillbar
