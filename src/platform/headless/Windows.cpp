#include "platform/headless/Windows.h"

#include "platform/view/TextSize.h"

#include <algorithm>
#include <cmath>

namespace quillbar::platform {

struct NativeView { };

struct NativeWindow {
    Window& window;
};

namespace {

struct Desktop {
    std::vector<Window*> windows;
    Window* keyWindow = nullptr;
    int raiseCount = 0;
};

Desktop& desktop()
{
    static Desktop instance;
    return instance;
}

void setKeyWindow(Window* window)
{
    auto& current = desktop().keyWindow;
    if (current == window)
        return;
    if (current)
        current->userChangedKey(false);
    current = window;
    if (current)
        current->userChangedKey(true);
}

void takeAway(Window& window)
{
    auto& shown = desktop().windows;
    std::erase(shown, &window);
    if (desktop().keyWindow != &window)
        return;
    // A window that goes away is not told: it knows, and may be under destruction.
    desktop().keyWindow = nullptr;
    auto const next
        = std::ranges::find_if(shown, [](auto* other) { return other->canBecomeKeyWindow(); });
    setKeyWindow(next == shown.end() ? nullptr : *next);
}

} // namespace

void NativeViewDeleter::operator()(NativeView* native) const
{
    delete native;
}

NativeView* createNativeView(View&)
{
    return new NativeView;
}

void syncView(View const&) { }

void NativeWindowDeleter::operator()(NativeWindow* native) const
{
    takeAway(native->window);
    delete native;
}

NativeWindow* createNativeWindow(Window& window)
{
    return new NativeWindow { window };
}

void syncWindow(Window const& window)
{
    if (!window.isVisible())
        takeAway(window.native()->window);
}

void syncFirstResponder(Window const&) { }

void centerNativeWindow(Window const&) { }

void raiseNativeWindow(Window const& window)
{
    auto& raised = window.native()->window;
    auto& shown = desktop().windows;
    std::erase(shown, &raised);
    shown.insert(shown.begin(), &raised);
    ++desktop().raiseCount;
    if (raised.canBecomeKeyWindow())
        setKeyWindow(&raised);
}

void syncKeyboardGrab() { }

Size textSize(std::string_view text, Font const& font)
{
    auto const characters = std::ranges::count_if(
        text, [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; });
    return { std::ceil(static_cast<double>(characters) * font.size * 0.6),
        std::ceil(font.size * 1.25) };
}

namespace headless {

std::vector<Window*> windows()
{
    return desktop().windows;
}

Window* keyWindow()
{
    return desktop().keyWindow;
}

int raiseCount()
{
    return desktop().raiseCount;
}

bool isKeyboardGrabbed()
{
    return isKeyboardGrabWanted() && desktop().keyWindow != nullptr;
}

void resetWindows()
{
    setKeyWindow(nullptr);
    desktop() = {};
}

} // namespace headless

} // namespace quillbar::platform
