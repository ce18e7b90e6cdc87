#include "platform/linux/process/Spawn.h"

#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <glib.h>
#include <map>
#include <spawn.h>
#include <unistd.h>

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

using Variables = std::map<std::string, std::optional<std::string>>;

/// By name, what children get in place of this program's own value; nothing where they get none.
Variables& variablesOfChildren()
{
    // The launch of this program, which a child would otherwise claim to be the end of.
    static Variables variables { { "DESKTOP_STARTUP_ID", {} }, { "XDG_ACTIVATION_TOKEN", {} },
        { "DBUS_STARTER_ADDRESS", {} }, { "DBUS_STARTER_BUS_TYPE", {} } };
    return variables;
}

GStrv childEnvironment()
{
    auto* environment = g_get_environ();
    for (auto const& [name, value] : variablesOfChildren()) {
        environment = value ? g_environ_setenv(environment, name.c_str(), value->c_str(), TRUE)
                            : g_environ_unsetenv(environment, name.c_str());
    }
    return environment;
}

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
    g_auto(GStrv) environment = childEnvironment();
    pid_t child = -1;
    if (::posix_spawn(
            &child, pointers.front(), actions.get(), attributes.get(), pointers.data(), environment)
        != 0)
        return std::nullopt;
    return child;
}

void setOwnVariable(char const* name, char const* value)
{
    auto const* const old = g_getenv(name);
    variablesOfChildren().try_emplace(name, old ? std::optional<std::string>(old) : std::nullopt);
    g_setenv(name, value, TRUE);
}

} // namespace quillbar::platform
