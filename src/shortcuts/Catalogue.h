#pragma once

#include "shortcuts/Environment.h"
#include "shortcuts/Trust.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillbar::shortcuts {

/// How a desktop entry is to be started.
struct DesktopCommand {
    std::string exec;
    /// The folder to start in; empty for the person's home.
    std::string folder;
    bool runsInTerminal = false;
};

struct Shortcut {
    std::string name;
    /// Absolute path of the script, program or desktop entry.
    std::string file;
    /// Only for desktop entries; other files are executed themselves.
    std::optional<DesktopCommand> command;
};

/// A file that a person may have meant for a shortcut.
struct RefusedFile {
    std::string file;
    /// None: the file only lacks the permission to execute.
    Distrust reason = Distrust::None;
};

/// The shortcuts of all folders, found anew by each program run.
class Catalogue {
public:
    /// Reads the folders; missing ones count as empty.
    explicit Catalogue(Environment const& environment);

    /// Sorted by name; no name occurs twice.
    [[nodiscard]] std::vector<Shortcut> const& shortcuts() const { return shortcuts_; }
    /// One line for each file or folder that was passed over for a fault in it.
    [[nodiscard]] std::vector<std::string> const& notices() const { return notices_; }

    [[nodiscard]] Shortcut const* find(std::string_view name) const;
    /// The file that would have this name if it were not refused, or null.
    [[nodiscard]] RefusedFile const* findRefused(std::string_view name) const;

private:
    void add(std::vector<Shortcut> found);

    std::vector<Shortcut> shortcuts_;
    std::vector<RefusedFile> refused_;
    std::vector<std::string> notices_;
};

} // namespace quillbar::shortcuts
