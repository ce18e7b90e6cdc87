#pragma once

#include "shortcuts/Environment.h"
#include "support/TemporaryFolder.h"

#include <filesystem>
#include <map>
#include <string>
#include <sys/stat.h>
#include <vector>

namespace quillbar::shortcuts {

/// How a run of the real program ended.
struct Outcome {
    /// The exit status, or minus the number of the signal that ended it.
    int status = 0;
    std::string output;
    std::string errors;
};

/// A person with a home of their own, gone with this object.
class Scratch {
public:
    Scratch();

    test::TemporaryFolder const folder;
    std::filesystem::path const home = folder.path();
    std::filesystem::path const own = home / "data/shortcuts";
    std::filesystem::path const shared = home / "system/shortcuts";
    std::filesystem::path const programs = home / "programs";
    std::filesystem::path const logs = home / ".local/state/shortcuts";
    /// Those of the person; tests may change them.
    std::map<std::string, std::string> variables;

    /// Writes a file, making its folder.
    static std::filesystem::path write(
        std::filesystem::path const& path, std::string const& text, mode_t mode = 0755);
    /// Writes a shell script into the person's own folder.
    std::filesystem::path script(std::string const& fileName, std::string const& body = "exit 0");
    /// Writes an application's desktop entry with these lines into the person's own folder.
    std::filesystem::path entry(std::string const& fileName, std::string const& lines);

    /// The person's own; sets PATH of the test as well.
    [[nodiscard]] Environment environment() const;

    /// Runs the program without a terminal; standard output goes to this file when one is given,
    /// and errors as well when it is /dev/null.
    [[nodiscard]] Outcome run(
        std::vector<std::string> arguments, std::filesystem::path output = {}) const;
};

[[nodiscard]] std::string contents(std::filesystem::path const& path);

} // namespace quillbar::shortcuts
