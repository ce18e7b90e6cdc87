// The windows and the status item: no native side but what the record shows of them.

#include "platform/headless/Headless.h"
#include "platform/view/TextSize.h"

#include <algorithm>
#include <cmath>

namespace quillbar::platform {

struct NativeView { };

struct NativeWindow {
    Window& window;
};

struct NativeStatusItem {
    StatusItem& item;
};

namespace {

using headless::record;

void setKeyWindow(Window* window)
{
    auto& current = record().keyWindow;
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
    auto& shown = record().windows;
    std::erase(shown, &window);
    if (record().keyWindow != &window)
        return;
    // Without userChangedKey(): orderOut() has set the state, or the destructor is running.
    record().keyWindow = nullptr;
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
    auto& shown = record().windows;
    std::erase(shown, &raised);
    shown.insert(shown.begin(), &raised);
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

void NativeStatusItemDeleter::operator()(NativeStatusItem* native) const
{
    if (record().statusItem == &native->item)
        record().statusItem = nullptr;
    delete native;
}

NativeStatusItem* createNativeStatusItem(StatusItem& item)
{
    record().journal.emplace_back("createStatusItem");
    record().statusItem = &item;
    return new NativeStatusItem { item };
}

void syncStatusButton(StatusItem const& /*item*/)
{
    record().journal.emplace_back("syncStatusButton");
}

void syncStatusMenu(StatusItem const& /*item*/)
{
    record().journal.emplace_back("syncStatusMenu");
}

} // namespace quillbar::platform
