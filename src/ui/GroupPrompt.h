#pragma once

#include <optional>
#include <string>

namespace quillbar {

/// Asks for the name of a shortcut's section and blocks until the person has answered: the name, or
/// empty for no section, or nothing when the person cancels. The field starts with `current` unless
/// the section popup offers that by itself.
[[nodiscard]] std::optional<std::string> askForGroup(
    std::string const& shortcut, std::string const& current);

} // namespace quillbar
