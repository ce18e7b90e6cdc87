#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quillbar {

/// The only way to the system's automations: its command-line tool. Stateless; main thread.
class ShortcutsService {
public:
    ShortcutsService() = delete;

    /// The names of all shortcuts, sorted, duplicates kept; returns when the tool has exited. A
    /// tool that fails yields what it printed, one that cannot start or prints no UTF-8 nothing.
    ///
    /// A slow tool does not freeze the program: other events are carried out meanwhile. One that
    /// has not exited after 10 seconds, or has printed more than 64 MB, is killed and yields no
    /// names; so does quitting meanwhile.
    [[nodiscard]] static std::vector<std::string> list();

    /// list(), or nothing when the tool was killed: which shortcuts there are is not known then.
    [[nodiscard]] static std::optional<std::vector<std::string>> listIfAnswered();

    /// Runs one shortcut and returns at once. `completion`, which may be empty, is called exactly
    /// once on the main thread, with true when the tool exited with status 0.
    static void run(std::string const& name, std::function<void(bool succeeded)> completion = {});
};

} // namespace quillbar
