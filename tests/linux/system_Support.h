#pragma once

#include <QString>

#include <filesystem>
#include <functional>
#include <string>
#include <sys/types.h>
#include <utility>
#include <vector>

namespace quillbar::testing {

/// The test's application object, without a display; made on first use.
void startApplication();

/// Runs the event loop until `isDone`; the runner's time limit ends a test that never gets there.
void runUntil(std::function<bool()> const& isDone);

/// A folder of the test's own, removed with everything in it.
class TemporaryFolder {
public:
    TemporaryFolder();
    TemporaryFolder(TemporaryFolder const&) = delete;
    TemporaryFolder& operator=(TemporaryFolder const&) = delete;
    ~TemporaryFolder();

    [[nodiscard]] std::filesystem::path const& path() const { return path_; }
    std::filesystem::path write(std::filesystem::path const& name, std::string const& text) const;

private:
    std::filesystem::path path_;
};

[[nodiscard]] std::string readFile(std::filesystem::path const& file);

/// Sets HOME and the XDG folders to sub-folders of `folder`.
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

/// A process of the test's own, killed on destruction. Its environment is the test's with
/// `changes`.
class Process {
public:
    using Changes = std::vector<std::pair<std::string, std::string>>;

    explicit Process(std::vector<std::string> const& arguments, Changes const& changes = {});
    Process(Process const&) = delete;
    Process& operator=(Process const&) = delete;
    ~Process();

    void send(int signal) const;
    /// As waitpid() tells it; the event loop goes on while it waits.
    int waitStatus();

private:
    pid_t pid_ = -1;
};

/// The option for a PrivateBus that can start the services described in `folder`/services, and no
/// others.
[[nodiscard]] QString busConfiguration(std::filesystem::path const& folder);

} // namespace quillbar::testing
