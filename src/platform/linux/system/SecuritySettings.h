#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace quillbar::platform {

/// Finds the absolute path of a program; empty when it is not installed.
using ProgramFinder = std::function<std::string(std::string const& name)>;

/// The command that opens the desktop's own notification or keyboard settings; empty when it has
/// none. `currentDesktop` lists names separated by colons, the most specific first.
[[nodiscard]] std::vector<std::string> securitySettingsCommand(
    std::string_view currentDesktop, ProgramFinder const& find);

} // namespace quillbar::platform
