#pragma once

#include <filesystem>
#include <vector>

namespace quillbar::platform {

/// The folders of the XDG base-directory rules. A variable that is unset, empty or relative counts
/// as unset; a folder that the system does not tell is empty, or left out of a list.
[[nodiscard]] std::filesystem::path homeFolder();
[[nodiscard]] std::filesystem::path dataHome();
[[nodiscard]] std::filesystem::path configHome();
[[nodiscard]] std::filesystem::path stateHome();

/// The person's folder first, then the system's, best first.
[[nodiscard]] std::vector<std::filesystem::path> dataFolders();
[[nodiscard]] std::vector<std::filesystem::path> configFolders();

} // namespace quillbar::platform
