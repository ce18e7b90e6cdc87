#include "ui/PermissionWindowController.h"

#include "platform/Workspace.h"
#include "platform/view/Button.h"
#include "platform/view/ImageView.h"
#include "platform/view/Separator.h"
#include "ui/AboutWindowController.h"
#include "ui/Texts.h"

#include <string>

namespace quillbar {

using platform::Button;
using platform::FontWeight;
using platform::SystemColor;
using platform::TextAlignment;

namespace {

struct Permission {
    double y;
    std::string symbol;
    std::string heading;
    std::string line;
};

void addPermission(platform::View& content, Permission const& permission)
{
    auto const symbol = content.addSubview(
        std::make_shared<platform::ImageView>(platform::symbolImage(permission.symbol)));
    symbol->setFrame({ 44, permission.y, 26, 26 });
    addText(content, { 78, permission.y + 4, 280, 18 }, permission.heading,
        { .font = { .size = 13, .weight = FontWeight::Semibold } });
    addText(content, { 78, permission.y + 26, 280, 16 }, permission.line,
        { .font = { .size = 12 }, .color = SystemColor::SecondaryLabel });
}

} // namespace

PermissionWindowController::PermissionWindowController()
    : WindowController({ 400, 460 }, "Quillbar permissions")
{
}

void PermissionWindowController::buildUserInterface()
{
    auto& content = window().contentView();
    AboutWindowController::addIcon(content, 156, 26, 88);
    addText(content, { 0, 126, 400, 30 }, "Quillbar permissions",
        { .font = { .size = 22, .weight = FontWeight::Semibold },
            .alignment = TextAlignment::Center });
    addText(content, { 20, 160, 360, 20 }, "Two permissions let Quillbar do its best work.",
        { .font = { .size = 13 },
            .color = SystemColor::SecondaryLabel,
            .alignment = TextAlignment::Center });
    addPermission(content,
        { 210, "keyboard", "Input Monitoring", "Lets you record hotkeys to run shortcuts." });
    addPermission(content,
        { 276, "bell.fill", "Notifications", "Quiet confirmation when a shortcut launches." });
    addText(content, { 20, 336, 360, 16 }, "You can manage both anytime in System Settings.",
        { .font = { .size = 11 },
            .color = SystemColor::TertiaryLabel,
            .alignment = TextAlignment::Center });
    content.addSubview(std::make_shared<platform::Separator>())->setFrame({ 30, 356, 340, 1 });
    buildButtons();
}

void PermissionWindowController::buildButtons()
{
    auto& content = window().contentView();
    auto const gotIt
        = content.addSubview(std::make_shared<Button>(platform::ButtonStyle::Push, "Got it"));
    gotIt->setFrame({ 120, 366, 160, 34 });
    gotIt->setKeyEquivalent(platform::ButtonKey::Return);
    gotIt->onClick = weakly(*this, [](PermissionWindowController& self) { self.window().close(); });

    if (!platform::hasSecuritySettings())
        return;
    auto const link = content.addSubview(
        std::make_shared<Button>(platform::ButtonStyle::Borderless, "Open System Settings"));
    link->setFrame({ 110, 404, 180, 22 });
    link->setFont({ .size = 12, .weight = FontWeight::Medium });
    link->setContentTintColor(SystemColor::Accent);
    link->onClick = [] { platform::openSecuritySettings(); };
}

} // namespace quillbar
