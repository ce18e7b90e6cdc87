#include "ui/AboutWindowController.h"

#include "platform/Fatal.h"
#include "platform/Folders.h"
#include "platform/Symbols.h"
#include "platform/Workspace.h"
#include "platform/view/Button.h"
#include "platform/view/ImageView.h"
#include "platform/view/Separator.h"
#include "ui/Texts.h"

#include <memory>
#include <utility>

namespace quillbar {

using platform::FontWeight;
using platform::SystemColor;
using platform::TextAlignment;

namespace {

platform::Image makeIcon(double size)
{
    constexpr auto heart = "heart.fill";
    constexpr platform::Rgba pink { .red = 0.95, .green = 0.40, .blue = 0.65, .alpha = 1 };
    constexpr platform::Rgba violet { .red = 0.55, .green = 0.25, .blue = 0.75, .alpha = 1 };
    if (!platform::symbolExists(heart))
        platform::fatalError("the system has no heart.fill symbol");

    platform::Rect const square { 0, 0, size, size };
    auto const heartSize = 0.62 * size;
    auto const margin = (size - heartSize) / 2;
    return std::make_shared<platform::Drawing const>(platform::Drawing {
        .size = { size, size },
        .operations = {
            platform::ClipToRoundedRect { .rect = square, .radius = 0.22 * size },
            platform::FillLinearGradient {
                .rect = square, .start = pink, .end = violet, .angle = -60 },
            platform::DrawSymbol { .name = heart,
                .rect = { margin, margin, heartSize, heartSize },
                .color = platform::white },
        },
    });
}

/// Nothing for an address that the build did not set.
void addLink(platform::View& content, platform::Rect frame, platform::AttributedText title,
    std::string const& address, std::string description = {})
{
    if (address.empty())
        return;
    auto const link
        = content.addSubview(std::make_shared<platform::Button>(platform::ButtonStyle::Borderless));
    link->setFrame(frame);
    link->setFont(title.font);
    link->setContentTintColor(SystemColor::Accent);
    link->setAttributedTitle(std::move(title));
    link->setAccessibilityDescription(std::move(description));
    link->onClick = [address] { platform::openAddress(address); };
}

void addTexts(platform::View& content)
{
    auto const version = platform::bundleVersion();
    addText(content, { 0, 128, 380, 32 }, "Quillbar",
        { .font = { .size = 24, .weight = FontWeight::Semibold },
            .alignment = TextAlignment::Center });
    addText(content, { 0, 164, 380, 18 }, "Version " + (version.empty() ? "1.0" : version),
        { .font = { .size = 11 },
            .color = SystemColor::SecondaryLabel,
            .alignment = TextAlignment::Center });
    addText(content, { 20, 186, 340, 26 }, "Your Shortcuts, one click from the menu bar.",
        { .font = { .size = 13, .slant = platform::FontSlant::Italic },
            .alignment = TextAlignment::Center,
            .lineBreak = platform::LineBreak::WordWrap });
    addText(content, { 25, 224, 330, 140 },
        "Quillbar pins your favorite Shortcuts to the MacOS menu bar so your everyday apps are one "
        "click away.\n\nYour setup survives reboots and logouts, no re-adding ever. Your Shortcuts "
        "stay on your Mac: no account, no analytics, no tracking.",
        { .font = { .size = 12 },
            .color = SystemColor::SecondaryLabel,
            .alignment = TextAlignment::Center,
            .lineBreak = platform::LineBreak::WordWrap });
    content.addSubview(std::make_shared<platform::Separator>())->setFrame({ 30, 381, 320, 1 });
    addText(content, { 0, 394, 380, 20 }, "Made by " QUILLBAR_AUTHOR,
        { .font = { .size = 12, .weight = FontWeight::Medium },
            .alignment = TextAlignment::Center });
}

void addLinks(platform::View& content)
{
    addLink(content, { 130, 420, 120, 22 },
        { .text = QUILLBAR_AUTHOR_HANDLE,
            .font = { .size = 12, .weight = FontWeight::Medium },
            .color = SystemColor::Accent,
            .isUnderlined = true },
        QUILLBAR_PROFILE_ADDRESS, "The author's profile page");
    addLink(content, { 0, 444, 380, 16 },
        { .text = "Quillbar Support", .font = { .size = 10 }, .color = SystemColor::Accent },
        QUILLBAR_SUPPORT_ADDRESS);
}

} // namespace

AboutWindowController::AboutWindowController()
    : WindowController({ 380, 460 }, "About Quillbar")
{
}

platform::Image AboutWindowController::appIcon(double size)
{
    auto image = platform::bundleImage("AppIcon", { size, size });
    return image ? *image : makeIcon(size);
}

void AboutWindowController::addIcon(platform::View& content, double x, double y, double size)
{
    auto const icon = content.addSubview(std::make_shared<platform::ImageView>(appIcon(size)));
    icon->setFrame({ x, y, size, size });
    icon->setAccessibilityLabel("Quillbar");
}

void AboutWindowController::buildUserInterface()
{
    auto& content = window().contentView();
    addIcon(content, 142, 34, 96);
    addTexts(content);
    addLinks(content);
}

} // namespace quillbar
