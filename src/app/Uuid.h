#pragma once

#include <string>

namespace quillbar {

/// A fresh random UUID (version 4) in its usual upper-case text form. Any thread.
[[nodiscard]] std::string randomUuid();

} // namespace quillbar
