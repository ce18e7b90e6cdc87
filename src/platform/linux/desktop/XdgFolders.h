#pragma once

#include <filesystem>

namespace quillbar::platform {

/// The person's folders of the XDG base-directory rules. What the environment names is asked once.
[[nodiscard]] std::filesystem::path dataHome();
[[nodiscard]] std::filesystem::path configHome();

} // namespace quillbar::platform
