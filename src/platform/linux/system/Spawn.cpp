#include "platform/linux/system/Spawn.h"

#include "platform/linux/system/ChildEnvironment.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <glib.h>
#include <spawn.h>
#include <sys/wait.h>

// The header of glibc 2.36 does not say so itself.
extern "C" {
#include <sys/pidfd.h>
}

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
    explicit SpawnActions(ChildOutput output)
    {
        ::posix_spawn_file_actions_init(&actions_);
        // The output first: its descriptor may be one that the next action replaces.
        if (output.descriptor >= 0) {
            ::posix_spawn_file_actions_adddup2(&actions_, output.descriptor, STDOUT_FILENO);
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

} // namespace

std::optional<pid_t> spawnChild(std::vector<std::string> const& arguments, ChildOutput output)
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
    auto const environment = childEnvironment();
    pid_t child = -1;
    if (::posix_spawn(&child, pointers.front(), actions.get(), attributes.get(), pointers.data(),
            environment.data())
        != 0)
        return std::nullopt;
    return child;
}

FileDescriptor openChild(pid_t child)
{
    return FileDescriptor { ::pidfd_open(child, 0) };
}

std::optional<ChildExit> reapChild(pid_t child)
{
    siginfo_t info {};
    int result = 0;
    do {
        result = ::waitid(P_PID, static_cast<id_t>(child), &info, WEXITED | WNOHANG);
    } while (result != 0 && errno == EINTR);
    if (result != 0)
        return ChildExit {};
    if (info.si_pid == 0)
        return std::nullopt;
    if (info.si_code != CLD_EXITED)
        return ChildExit {};
    return ChildExit { info.si_status };
}

} // namespace quillbar::platform
