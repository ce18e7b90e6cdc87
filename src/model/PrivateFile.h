#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace quillbar {

/// The whole of a regular file; nothing when it is missing, unreadable, no regular file or larger
/// than any file of ours could be.
[[nodiscard]] std::optional<std::string> readFile(std::filesystem::path const& path);

/// Overwrites the file in place, so that a linked file stays a link; a new file is readable by its
/// owner only. Returns whether all of the text was written.
bool writePrivateFile(std::filesystem::path const& path, std::string_view text);

/// Makes the folder and those above it where they are missing, open to their owner only.
void createPrivateFolder(std::filesystem::path const& path);

} // namespace quillbar
