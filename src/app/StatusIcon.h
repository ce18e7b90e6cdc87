#pragma once

#include "platform/view/StatusItem.h"

#include <memory>
#include <optional>
#include <string>

namespace quillbar {

/// Shows the symbol on the status item, or the heart when the system has no such symbol. An item
/// without a button is left alone.
void showIcon(platform::StatusItem& statusItem, std::string const& iconSymbol);

/// Dims the icon for a moment, in that colour if one is given. Pulses that overlap each restore
/// the tint that they found, so a red one may leave the icon red until the next.
void pulseIcon(std::shared_ptr<platform::StatusItem> const& statusItem,
    std::optional<platform::Color> const& color = std::nullopt);

} // namespace quillbar
