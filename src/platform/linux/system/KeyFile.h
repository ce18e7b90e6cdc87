#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace quillbar::platform {

/// One `key=value` line of a desktop entry or a list of file associations, with its group.
struct KeyFileLine {
    std::string_view group;
    std::string_view key;
    std::string_view value;
};

/// The lines in their order, blanks around keys and values taken off; anything else is skipped. The
/// lines point into `text`.
[[nodiscard]] std::vector<KeyFileLine> parseKeyFile(std::string_view text);

/// The file's content; empty when it is no regular file, cannot be read or is longer than `limit`.
[[nodiscard]] std::string readSmallFile(std::filesystem::path const& file, std::size_t limit);

} // namespace quillbar::platform
