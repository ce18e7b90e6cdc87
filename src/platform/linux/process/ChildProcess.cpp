#include "platform/ChildProcess.h"

#include "platform/MainQueue.h"
#include "platform/linux/process/Child.h"
#include "platform/linux/process/ChildEnvironment.h"
#include "platform/linux/process/SignalNotifier.h"

#include <QCoreApplication>

#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <map>
#include <memory>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace quillbar::platform {

namespace {

class SpawnAttributes {
public:
    SpawnAttributes()
    {
        ::posix_spawnattr_init(&attributes_);
        sigset_t signals;
        ::sigemptyset(&signals);
        ::posix_spawnattr_setsigmask(&attributes_, &signals);
        // Not sigfillset(), which leaves out the two signals that the C library keeps for itself;
        // these would reach the child as ignored.
        std::memset(&signals, 0xff, sizeof signals);
        ::posix_spawnattr_setsigdefault(&attributes_, &signals);
        // Its own session: the hang-up of a terminal that this program runs in is not the child's.
        ::posix_spawnattr_setflags(&attributes_,
            static_cast<short>(
                POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSID));
    }
    SpawnAttributes(SpawnAttributes const&) = delete;
    SpawnAttributes& operator=(SpawnAttributes const&) = delete;
    ~SpawnAttributes() { ::posix_spawnattr_destroy(&attributes_); }

    [[nodiscard]] posix_spawnattr_t const* get() const { return &attributes_; }

private:
    posix_spawnattr_t attributes_ {};
};

class SpawnActions {
public:
    explicit SpawnActions(int output)
    {
        ::posix_spawn_file_actions_init(&actions_);
        // The output first: its descriptor may be one that the next action replaces.
        if (output >= 0) {
            ::posix_spawn_file_actions_adddup2(&actions_, output, STDOUT_FILENO);
        } else {
            ::posix_spawn_file_actions_addopen(&actions_, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
            ::posix_spawn_file_actions_adddup2(&actions_, STDOUT_FILENO, STDERR_FILENO);
        }
        ::posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        ::posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1);
        // A missing folder would fail the start, and the child would seem to be what is missing.
        auto const* const home = g_get_home_dir();
        auto const hasHome = g_file_test(home, G_FILE_TEST_IS_DIR) && ::access(home, X_OK) == 0;
        ::posix_spawn_file_actions_addchdir_np(&actions_, hasHome ? home : "/");
    }
    SpawnActions(SpawnActions const&) = delete;
    SpawnActions& operator=(SpawnActions const&) = delete;
    ~SpawnActions() { ::posix_spawn_file_actions_destroy(&actions_); }

    [[nodiscard]] posix_spawn_file_actions_t const* get() const { return &actions_; }

private:
    posix_spawn_file_actions_t actions_ {};
};

bool canBePassed(std::vector<std::string> const& arguments)
{
    for (auto const& argument : arguments) {
        // It would reach the child cut short, as another name.
        if (argument.find('\0') != std::string::npos)
            return false;
    }
    return !arguments.empty() && arguments.front().starts_with('/');
}

/// Tells of children's exits through the event loop and leaves no zombie. No child takes a
/// descriptor, of which the process may have as few as 1,024. Main thread.
class ChildWatcher {
public:
    /// Before the first child starts, whose signal would be lost.
    void attach()
    {
        exited_ = std::make_unique<SignalNotifier>(
            std::vector { SIGCHLD }, SA_NOCLDSTOP, [this] { collect(); });
    }

    void detach()
    {
        exited_.reset();
        completions_.clear();
    }

    void watch(pid_t child, ChildCompletion completion)
    {
        completions_[child] = std::move(completion);
    }

private:
    /// Asks every child, as pending signals of one kind merge into one.
    void collect()
    {
        std::erase_if(completions_, [](auto& entry) {
            auto& [child, completion] = entry;
            auto const exit = reapChild(child);
            if (exit && completion)
                post([completion = std::move(completion), exit] { completion(exit->status); });
            return exit.has_value();
        });
    }

    std::unique_ptr<SignalNotifier> exited_;
    std::map<pid_t, ChildCompletion> completions_;
};

ChildWatcher& childWatcher()
{
    // Never destroyed: detach() has freed what it held.
    static auto& watcher = *new ChildWatcher;
    return watcher;
}

void attachChildWatcher()
{
    childWatcher().attach();
    qAddPostRoutine([] { childWatcher().detach(); });
}

Q_COREAPP_STARTUP_FUNCTION(attachChildWatcher)

} // namespace

void runChild(std::vector<std::string> const& arguments, ChildCompletion completion)
{
    if (auto const child = spawnChild(arguments)) {
        childWatcher().watch(*child, std::move(completion));
        return;
    }
    if (completion)
        post([completion = std::move(completion)] { completion(std::nullopt); });
}

std::optional<pid_t> spawnChild(std::vector<std::string> const& arguments, int output)
{
    if (!canBePassed(arguments))
        return std::nullopt;
    std::vector<char*> pointers;
    pointers.reserve(arguments.size() + 1);
    for (auto const& argument : arguments)
        pointers.push_back(const_cast<char*>(argument.c_str()));
    pointers.push_back(nullptr);

    SpawnAttributes const attributes;
    SpawnActions const actions(output);
    g_auto(GStrv) environment = childEnvironment();
    pid_t child = -1;
    if (::posix_spawn(
            &child, pointers.front(), actions.get(), attributes.get(), pointers.data(), environment)
        != 0)
        return std::nullopt;
    return child;
}

std::optional<ChildExit> reapChild(pid_t child)
{
    siginfo_t info {};
    if (::waitid(P_PID, static_cast<id_t>(child), &info, WEXITED | WNOHANG) != 0)
        return ChildExit {};
    if (info.si_pid == 0)
        return std::nullopt;
    return info.si_code == CLD_EXITED ? ChildExit { info.si_status } : ChildExit {};
}

void killWithItsChildren(pid_t child)
{
    // It leads a session of its own, and so the group of what it started.
    ::kill(-child, SIGKILL);
    ::kill(child, SIGKILL);
    childWatcher().watch(child, {});
}

} // namespace quillbar::platform
