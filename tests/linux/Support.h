#pragma once

#include "support/TemporaryFolder.h"

#include <QString>

#include <filesystem>
#include <functional>
#include <string>

namespace quillbar::testing {

/// The test's application object, without a display; made on first use.
void startApplication();

/// Runs the event loop until `isDone`; the runner's time limit ends a test that never gets there.
void runUntil(std::function<bool()> const& isDone);

using test::TemporaryFolder;

[[nodiscard]] std::string readFile(std::filesystem::path const& file);

/// Sets HOME and the XDG folders to sub-folders of `folder`. The first use in a process decides:
/// GLib remembers them. CTest starts a process for each test.
void useScratchHome(std::filesystem::path const& folder);

/// A named pipe through which other processes tell the test, line by line.
class Mailbox {
public:
    explicit Mailbox(std::filesystem::path path);
    Mailbox(Mailbox const&) = delete;
    Mailbox& operator=(Mailbox const&) = delete;
    ~Mailbox();

    [[nodiscard]] std::filesystem::path const& path() const { return path_; }
    /// The next line; the event loop goes on while it waits.
    std::string nextLine();

private:
    std::filesystem::path path_;
    int descriptor_;
};

/// The option for a PrivateBus that can start the services described in `folder`/services, and no
/// others.
[[nodiscard]] QString busConfiguration(std::filesystem::path const& folder);

} // namespace quillbar::testing
