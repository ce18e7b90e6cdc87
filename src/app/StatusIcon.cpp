#include "app/StatusIcon.h"

#include "platform/MainQueue.h"

namespace quillbar {

void showIcon(platform::StatusItem& statusItem, std::string const& iconSymbol)
{
    auto* const button = statusItem.button();
    if (!button)
        return;
    constexpr auto const* description = "Quillbar";
    auto image = platform::symbolImage(iconSymbol, description);
    if (!image)
        image = platform::symbolImage("heart.fill", description);
    if (image)
        button->setImage(std::move(*image));
    // Names the default hotkey of the palette, whichever is set.
    button->setToolTip("Quillbar · ⌥⌘T");
}

void pulseIcon(std::shared_ptr<platform::StatusItem> const& statusItem,
    std::optional<platform::Color> const& color)
{
    auto* const button = statusItem ? statusItem->button() : nullptr;
    if (!button)
        return;
    auto const previous = button->contentTintColor();
    if (color)
        button->setContentTintColor(color);
    button->setAlpha(0.35);
    platform::postDelayed(
        std::chrono::milliseconds(150), [weak = std::weak_ptr(statusItem), previous] {
            auto const item = weak.lock();
            if (!item)
                return;
            item->button()->setAlpha(1);
            item->button()->setContentTintColor(previous);
        });
}

} // namespace quillbar
