#pragma once

#include <optional>
#include <string>
#include <vector>

namespace quillbar::shortcuts {

/// One command of a desktop entry. An empty `exec` means that there is none to start.
struct DesktopAction {
    std::string name;
    /// The value of Exec; see splitCommandLine().
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
    /// Each once.
    std::vector<DesktopAction> actions;
};

/// Reads an entry of type Application, its names in the person's language; nothing for any other
/// text. Any bytes may be passed.
[[nodiscard]] std::optional<DesktopEntry> parseDesktopEntry(std::string const& text);

/// The arguments that the value of Exec stands for, without its field codes: there is neither a
/// file nor an address to put in their place. Nothing for an unfinished quotation or no program at
/// all. Must hold no NUL.
[[nodiscard]] std::optional<std::vector<std::string>> splitCommandLine(std::string const& exec);

} // namespace quillbar::shortcuts
