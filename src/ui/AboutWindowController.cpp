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

constexpr platform::Size contentSize { .width = 380, .height = 460 };

std::shared_ptr<platform::Window> makeWindow()
{
    auto window
        = std::make_shared<platform::Window>(contentSize, platform::WindowStyle::TitledClosable);
    window->setTitle("About Quillbar");
    return window;
}

std::string versionText()
{
    auto const version = platform::bundleVersion();
    return "Version " + (version.empty() ? "1.0" : version);
}

std::shared_ptr<platform::Button> addLink(
    platform::View& content, platform::Rect frame, platform::AttributedText title)
{
    auto link
        = content.addSubview(std::make_shared<platform::Button>(platform::ButtonStyle::Borderless));
    link->setFrame(frame);
    link->setFont(title.font);
    link->setContentTintColor(SystemColor::Accent);
    link->setAttributedTitle(std::move(title));
    return link;
}

} // namespace

AboutWindowController::AboutWindowController()
    : WindowController(makeWindow())
{
}

platform::Image AboutWindowController::appIcon(double size)
{
    if (auto image = platform::bundleImage("AppIcon", { size, size }))
        return *image;
    return makeIcon(size);
}

platform::Image AboutWindowController::makeIcon(double size)
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

void AboutWindowController::buildUserInterface()
{
    auto const content = std::make_shared<platform::View>();
    content->setFrame({ 0, 0, contentSize.width, contentSize.height });
    buildTexts(*content);
    buildLinks(*content);
    window().setContentView(content);
}

void AboutWindowController::buildTexts(platform::View& content)
{
    auto const icon = content.addSubview(std::make_shared<platform::ImageView>(appIcon(96)));
    icon->setFrame({ 142, 34, 96, 96 });
    icon->setAccessibilityLabel("Quillbar");
    addText(content, { 0, 128, 380, 32 }, "Quillbar",
        { .font = { .size = 24, .weight = FontWeight::Semibold },
            .alignment = TextAlignment::Center });
    addText(content, { 0, 164, 380, 18 }, versionText(),
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

void AboutWindowController::buildLinks(platform::View& content)
{
    auto const profile = addLink(content, { 130, 420, 120, 22 },
        { .text = QUILLBAR_AUTHOR_HANDLE,
            .font = { .size = 12, .weight = FontWeight::Medium },
            .color = SystemColor::Accent,
            .isUnderlined = true });
    profile->setAccessibilityDescription("The author's profile page");
    profile->onClick = weakly(*this, [](AboutWindowController& self) { self.openProfile(); });

    auto const support = addLink(content, { 0, 444, 380, 16 },
        { .text = "Quillbar Support", .font = { .size = 10 }, .color = SystemColor::Accent });
    support->onClick = weakly(*this, [](AboutWindowController& self) { self.openSupport(); });
}

void AboutWindowController::openSupport()
{
    platform::openAddress(QUILLBAR_SUPPORT_ADDRESS);
}

void AboutWindowController::openProfile()
{
    platform::openAddress(QUILLBAR_PROFILE_ADDRESS);
}

} // namespace quillbar
