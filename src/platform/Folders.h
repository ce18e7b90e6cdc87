#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace quillbar::platform {

/// The person's folders for application data, best first; empty when the system names none.
[[nodiscard]] std::vector<std::filesystem::path> applicationSupportFolders();

/// The person's folder for what a program remembers from run to run but could do without; empty
/// when the system names none.
[[nodiscard]] std::filesystem::path stateFolder();

/// Absolute path of the running executable; empty when the system does not tell.
[[nodiscard]] std::string executablePath();

/// The program's version as people read it, for example "1.2.0"; empty when the bundle names none.
[[nodiscard]] std::string bundleVersion();

} // namespace quillbar::platform
