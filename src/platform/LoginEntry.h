#pragma once

#include <string>

namespace quillbar::platform {

/// What the system starts once at login.
struct LoginEntry {
    std::string label;
    /// Absolute; empty when unknown.
    std::string executablePath;
};

/// Writes the person's login entry, replacing one of the same label. One that the person switched
/// off in the system's own settings stays off until it is removed. Errors are ignored.
void writeLoginEntry(LoginEntry const& entry);

/// Deletes the login entry of that label; there being none is no error.
void removeLoginEntry(std::string const& label);

} // namespace quillbar::platform
