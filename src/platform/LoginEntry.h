#pragma once

#include <cstdint>
#include <string>

namespace quillbar::platform {

/// Whether the rewrite keeps an entry switched off that the person switched off in the system's own
/// settings.
enum class LoginSwitch : std::uint8_t { Keep, Reset };

/// What the system starts once at login.
struct LoginEntry {
    std::string label;
    /// Absolute; empty when unknown.
    std::string executablePath;
};

/// Writes the person's login entry, replacing one of the same label. Errors are ignored.
void writeLoginEntry(LoginEntry const& entry, LoginSwitch loginSwitch);

/// Deletes the login entry of that label; there being none is no error.
void removeLoginEntry(std::string const& label);

} // namespace quillbar::platform
