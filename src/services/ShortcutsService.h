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

    /// The names of all shortcuts, sorted, duplicates kept; returns when the tool has exited, and
    /// carries out no event meanwhile. The tool's exit status does not count; a listing that is no
    /// UTF-8 has no names.
    ///
    /// Nothing when the tool did not answer: it could not be started, was ended by a signal, or was
    /// killed because it ran for 10 seconds or printed more than 64 MB. Which shortcuts there are
    /// is not known then.
    [[nodiscard]] static std::optional<std::vector<std::string>> list();

    /// Runs one shortcut and returns at once. `completion`, which may be empty, is called exactly
    /// once on the main thread, with true when the tool exited with status 0.
    static void run(std::string const& name, std::function<void(bool succeeded)> completion = {});
};

} // namespace quillbar
