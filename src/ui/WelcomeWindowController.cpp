#include "ui/WelcomeWindowController.h"

#include "platform/Application.h"
#include "platform/Workspace.h"
#include "platform/view/Button.h"
#include "platform/view/ImageView.h"
#include "platform/view/Separator.h"
#include "services/ShortcutsService.h"
#include "ui/AboutWindowController.h"
#include "ui/Texts.h"

#include <utility>

namespace quillbar {

using platform::Button;
using platform::SystemColor;

namespace {

struct Variant {
    platform::Rect bodyFrame;
    std::string body;
    std::string primaryTitle;
    std::string secondaryTitle;
};

void addTexts(platform::View& content, Variant const& variant)
{
    using platform::TextAlignment;
    AboutWindowController::addIcon(content, 166, 26, 88);
    addText(content, { 0, 126, 420, 30 }, "Welcome to Quillbar",
        { .font = { .size = 24, .weight = platform::FontWeight::Semibold },
            .alignment = TextAlignment::Center });
    addText(content, { 0, 160, 420, 20 }, "Your Shortcuts, one click from the menu bar.",
        { .font = { .size = 14, .slant = platform::FontSlant::Italic },
            .color = SystemColor::SecondaryLabel,
            .alignment = TextAlignment::Center });
    addText(content, variant.bodyFrame, variant.body,
        { .font = { .size = 13 },
            .alignment = TextAlignment::Center,
            .lineBreak = platform::LineBreak::WordWrap });
    addText(content, { 0, 392, 420, 16 }, "Press ⌥⌘T to jump to any shortcut.",
        { .font = { .size = 11 },
            .color = SystemColor::TertiaryLabel,
            .alignment = TextAlignment::Center });
}

} // namespace

WelcomeWindowController::WelcomeWindowController(std::function<void()> onPrimary)
    : WindowController({ 420, 430 }, "Welcome to Quillbar")
    , onPrimary_(std::move(onPrimary))
{
}

void WelcomeWindowController::buildUserInterface()
{
    Variant const hasShortcuts {
        .bodyFrame = { 40, 186, 340, 84 },
        .body = "Pin the Shortcuts you use most and they'll live right in your menu bar, always a "
                "click away. Set a hotkey to fire one from anywhere, or let Quillbar auto-run your "
                "favorites at login.",
        .primaryTitle = "Pick your shortcuts",
        .secondaryTitle = "Not now",
    };
    Variant const noShortcuts {
        .bodyFrame = { 46, 186, 328, 84 },
        .body = "You don't have any Shortcuts yet.\n\nOpen the Shortcuts app and create one, then "
                "come back here: it'll appear in your list to pin.",
        .primaryTitle = "Open Shortcuts App",
        .secondaryTitle = "Later",
    };
    // A tool that did not answer does not mean that there are none.
    auto const names = ShortcutsService::list();
    bool const isEmpty = names && names->empty();
    auto const& variant = isEmpty ? noShortcuts : hasShortcuts;
    auto& content = window().contentView();
    addTexts(content, variant);

    auto const primary = content.addSubview(
        std::make_shared<Button>(platform::ButtonStyle::Push, variant.primaryTitle));
    primary->setFrame({ 116, 302, 188, 34 });
    primary->setKeyEquivalent(platform::ButtonKey::Return);
    primary->onClick = weakly(*this, [isEmpty](WelcomeWindowController& self) {
        if (isEmpty)
            platform::openAddress("shortcuts://");
        else
            self.pickShortcuts();
    });

    auto const secondary = content.addSubview(
        std::make_shared<Button>(platform::ButtonStyle::Borderless, variant.secondaryTitle));
    secondary->setFrame({ 150, 344, 120, 22 });
    secondary->setFont({ .size = 12 });
    secondary->setContentTintColor(SystemColor::SecondaryLabel);
    secondary->onClick = weakly(*this, [](WelcomeWindowController& self) {
        self.window().close();
        platform::activateIgnoringOtherApps();
    });

    content.addSubview(std::make_shared<platform::Separator>())->setFrame({ 40, 376, 340, 1 });
}

void WelcomeWindowController::pickShortcuts()
{
    window().close();
    if (onPrimary_)
        onPrimary_();
}

} // namespace quillbar
