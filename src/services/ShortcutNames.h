#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quillbar {

/// The names in a listing, one a line, in ascending order. Empty lines are left out, blanks and
/// duplicates kept; a listing that is no UTF-8 has no names. Names over 255 bytes are left out,
/// which standard error tells.
[[nodiscard]] std::vector<std::string> shortcutNames(std::string_view listing);

} // namespace quillbar
