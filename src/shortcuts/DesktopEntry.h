#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillbar::shortcuts {

/// One command of a desktop entry. An empty `exec` means that there is none to start.
struct DesktopAction {
    std::string name;
    /// As it stands in the file but for the escapes of every value; see splitCommandLine().
    std::string exec;
};

/// The parts of a desktop entry that concern shortcuts.
struct DesktopEntry {
    std::string name;
    std::string exec;
    /// A program that must be there for the entry to count; empty for none.
    std::string tryExec;
    /// The folder to start in; empty for none.
    std::string path;
    bool isHidden = false;
    bool runsInTerminal = false;
    std::vector<DesktopAction> actions;
};

/// Reads an entry of type Application, its names in the first of these locales that it has; nothing
/// for any other text. Any bytes may be passed.
[[nodiscard]] std::optional<DesktopEntry> parseDesktopEntry(
    std::string_view text, std::vector<std::string> const& locales);

} // namespace quillbar::shortcuts
