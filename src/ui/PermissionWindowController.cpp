#include "ui/PermissionWindowController.h"

#include "platform/Workspace.h"
#include "platform/view/Button.h"
#include "platform/view/ImageView.h"
#include "platform/view/Separator.h"
#include "ui/AboutWindowController.h"
#include "ui/Texts.h"

#include <variant>

namespace quillbar {

using platform::Button;
using platform::FontWeight;
using platform::SystemColor;
using platform::TextAlignment;

namespace {

constexpr platform::Size contentSize { .width = 400, .height = 460 };

std::shared_ptr<platform::Window> makeWindow()
{
    auto window
        = std::make_shared<platform::Window>(contentSize, platform::WindowStyle::TitledClosable);
    window->setTitle("Quillbar permissions");
    return window;
}

} // namespace

struct PermissionWindowController::Permission {
    double y;
    std::string symbol;
    std::string heading;
    std::string line;
};

PermissionWindowController::PermissionWindowController()
    : WindowController(makeWindow())
{
}

void PermissionWindowController::buildUserInterface()
{
    auto const content = std::make_shared<platform::View>();
    content->setFrame({ 0, 0, contentSize.width, contentSize.height });
    auto const icon = content->addSubview(
        std::make_shared<platform::ImageView>(AboutWindowController::appIcon(88)));
    icon->setFrame({ 156, 26, 88, 88 });
    icon->setAccessibilityLabel("Quillbar");
    addText(*content, { 0, 126, 400, 30 }, "Quillbar permissions",
        { .font = { .size = 22, .weight = FontWeight::Semibold },
            .alignment = TextAlignment::Center });
    addText(*content, { 20, 160, 360, 20 }, "Two permissions let Quillbar do its best work.",
        { .font = { .size = 13 },
            .color = SystemColor::SecondaryLabel,
            .alignment = TextAlignment::Center });
    buildPermission(*content,
        { 210, "keyboard", "Input Monitoring", "Lets you record hotkeys to run shortcuts." });
    buildPermission(*content,
        { 276, "bell.fill", "Notifications", "Quiet confirmation when a shortcut launches." });
    addText(*content, { 20, 336, 360, 16 }, "You can manage both anytime in System Settings.",
        { .font = { .size = 11 },
            .color = SystemColor::TertiaryLabel,
            .alignment = TextAlignment::Center });
    content->addSubview(std::make_shared<platform::Separator>())->setFrame({ 30, 356, 340, 1 });
    buildButtons(*content);
    window().setContentView(content);
}

void PermissionWindowController::buildPermission(
    platform::View& content, Permission const& permission)
{
    auto const symbol = content.addSubview(std::make_shared<platform::ImageView>());
    symbol->setFrame({ 44, permission.y, 26, 26 });
    if (auto image = platform::symbolImage(permission.symbol)) {
        if (auto* const symbolImage = std::get_if<platform::SymbolImage>(&*image))
            symbolImage->size = { 26, 26 };
        symbol->setImage(std::move(image));
    }
    addText(content, { 78, permission.y + 4, 280, 18 }, permission.heading,
        { .font = { .size = 13, .weight = FontWeight::Semibold } });
    addText(content, { 78, permission.y + 26, 280, 16 }, permission.line,
        { .font = { .size = 12 }, .color = SystemColor::SecondaryLabel });
}

void PermissionWindowController::buildButtons(platform::View& content)
{
    auto const gotIt
        = content.addSubview(std::make_shared<Button>(platform::ButtonStyle::Push, "Got it"));
    gotIt->setFrame({ 120, 366, 160, 34 });
    gotIt->setKeyEquivalent(platform::ButtonKey::Return);
    gotIt->onClick = weakly(*this, [](PermissionWindowController& self) { self.gotItTapped(); });

    if (!platform::hasSecuritySettings())
        return;
    auto const link = content.addSubview(
        std::make_shared<Button>(platform::ButtonStyle::Borderless, "Open System Settings"));
    link->setFrame({ 110, 404, 180, 22 });
    link->setFont({ .size = 12, .weight = FontWeight::Medium });
    link->setContentTintColor(SystemColor::Accent);
    link->onClick
        = weakly(*this, [](PermissionWindowController& self) { self.openSystemSettings(); });
}

void PermissionWindowController::gotItTapped()
{
    window().close();
}

void PermissionWindowController::openSystemSettings()
{
    platform::openSecuritySettings();
}

} // namespace quillbar
