#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillbar::shortcuts {

/// The arguments that the Exec value of a desktop entry stands for, without its field codes: there
/// is neither a file nor an address to put in their place. Nothing for an unfinished quotation or
/// no program at all. Any bytes may be passed.
[[nodiscard]] std::optional<std::vector<std::string>> splitCommandLine(std::string_view exec);

} // namespace quillbar::shortcuts
