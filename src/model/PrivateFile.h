#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace quillbar {

/// The whole of a regular file; nothing when it is missing, unreadable, no regular file or larger
/// than 256 MB.
[[nodiscard]] std::optional<std::string> readFile(std::filesystem::path const& path);

/// Replaces the file by a new one, written beside it and renamed: at any time, also after a failure
/// or the process's death, the file holds the old text or the new one. A link stays a link and the
/// mode stays as it was; a new file is readable by its owner only. Returns whether it was replaced.
bool writePrivateFile(std::filesystem::path const& path, std::string_view text);

/// Makes the folder and those above it where they are missing, open to their owner only.
void createPrivateFolder(std::filesystem::path const& path);

} // namespace quillbar
