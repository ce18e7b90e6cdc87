#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace quillbar {

/// The whole of a regular file; nothing when it is missing, unreadable, no regular file or larger
/// than any file of ours could be.
[[nodiscard]] std::optional<std::string> readFile(std::filesystem::path const& path);

/// Overwrites the file so that a link stays a link and the mode stays as it was; a new file is
/// readable by its owner only. Returns whether all of the text was written: when not, the old text
/// is still there, which may have gained blanks at its end. The same holds for a process that is
/// killed meanwhile; a large file then needs a folder that can be written to.
bool writePrivateFile(std::filesystem::path const& path, std::string_view text);

/// Renames a file that this person may not read. Returns whether no file is left that was there.
[[nodiscard]] bool setAsideForbiddenFile(
    std::filesystem::path const& path, std::filesystem::path const& aside);

/// Makes the folder and those above it where they are missing, open to their owner only.
void createPrivateFolder(std::filesystem::path const& path);

} // namespace quillbar
