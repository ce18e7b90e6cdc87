#pragma once

#include <functional>
#include <string>
#include <vector>

namespace quillbar {

/// The only way to the system's automations: its command-line tool. Stateless; main thread.
class ShortcutsService {
public:
    ShortcutsService() = delete;

    /// The names of all shortcuts, sorted, duplicates kept; blocks until the tool has exited. A
    /// tool that fails yields what it printed, one that cannot start or prints no UTF-8 nothing.
    [[nodiscard]] static std::vector<std::string> list();

    /// Runs one shortcut and returns at once. `completion`, which may be empty, is called exactly
    /// once on the main thread, with true when the tool exited with status 0.
    static void run(std::string const& name, std::function<void(bool succeeded)> completion = {});
};

} // namespace quillbar
