#include "platform/ChildProcess.h"

#include "platform/MainQueue.h"

#import <Foundation/Foundation.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <fcntl.h>
#include <future>
#include <memory>
#include <poll.h>
#include <spawn.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

extern char** environ;

namespace quillbar::platform {

namespace {

using Clock = std::chrono::steady_clock;
using ExitStatus = std::optional<int>;

constexpr std::size_t longestOutput = std::size_t { 64 } * 1024 * 1024;
constexpr int discarded = -1;

class SpawnAttributes {
public:
    SpawnAttributes()
    {
        ::posix_spawnattr_init(&attributes_);
        sigset_t signals;
        // On macOS these three are macros.
        sigemptyset(&signals);
        ::posix_spawnattr_setsigmask(&attributes_, &signals);
        sigfillset(&signals);
        // Their handling cannot be set.
        sigdelset(&signals, SIGKILL);
        sigdelset(&signals, SIGSTOP);
        ::posix_spawnattr_setsigdefault(&attributes_, &signals);
        // A group of its own, so that it can be killed with what it started.
        ::posix_spawnattr_setpgroup(&attributes_, 0);
        ::posix_spawnattr_setflags(&attributes_,
            static_cast<short>(POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF
                | POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_CLOEXEC_DEFAULT));
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
        ::posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        if (output == discarded) {
            ::posix_spawn_file_actions_addopen(&actions_, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
            ::posix_spawn_file_actions_addopen(&actions_, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        } else {
            ::posix_spawn_file_actions_adddup2(&actions_, output, STDOUT_FILENO);
            ::posix_spawn_file_actions_addinherit_np(&actions_, STDERR_FILENO);
        }
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
    // A null character would end the argument there.
    auto const isWhole = [](auto const& text) { return text.find('\0') == std::string::npos; };
    return !arguments.empty() && arguments.front().starts_with('/')
        && std::ranges::all_of(arguments, isWhole);
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
    pid_t child = -1;
    auto const error = ::posix_spawn(
        &child, pointers.front(), actions.get(), attributes.get(), pointers.data(), environ);
    return error == 0 ? std::optional(child) : std::nullopt;
}

/// Calls `onExit` with the child's exit on a thread of the system's. The children's exits come one
/// after the other, in their order; none takes a thread while it runs.
void watchChild(pid_t child, std::function<void(ExitStatus)> onExit)
{
    static dispatch_queue_t const exits = dispatch_queue_create("exits", DISPATCH_QUEUE_SERIAL);
    dispatch_source_t const source = dispatch_source_create(
        DISPATCH_SOURCE_TYPE_PROC, static_cast<uintptr_t>(child), DISPATCH_PROC_EXIT, exits);
    dispatch_source_set_event_handler(source, ^{
        int status = 0;
        // The event may come a moment before the status.
        auto const reaped = ::waitpid(child, &status, 0);
        onExit(
            reaped == child && WIFEXITED(status) ? ExitStatus(WEXITSTATUS(status)) : std::nullopt);
        dispatch_source_cancel(source);
    });
    dispatch_resume(source);
}

/// Appends up to `limit` bytes of what the pipe holds; false at its end.
bool readAvailable(int pipe, std::string& output, std::size_t limit)
{
    std::array<char, 65536> buffer;
    auto const count = ::read(pipe, buffer.data(), std::min(limit, buffer.size()));
    if (count > 0)
        output.append(buffer.data(), static_cast<std::size_t>(count));
    return count > 0 || (count < 0 && errno == EINTR);
}

/// After the child's exit: what is in the pipe now, not what grandchildren write meanwhile.
void readRest(int pipe, std::string& output)
{
    int available = 0;
    if (::ioctl(pipe, FIONREAD, &available) != 0)
        return;
    auto const end = output.size() + static_cast<std::size_t>(available);
    while (output.size() < end && readAvailable(pipe, output, end - output.size())) { }
}

/// Until the child has exited, which closes the other end of `exited`; false when it went beyond a
/// limit and still runs.
bool readUntilExit(int exited, int pipe, Clock::time_point deadline, std::string& output)
{
    bool isAtEnd = false;
    while (output.size() <= longestOutput) {
        auto const left
            = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
        if (left <= 0)
            return false;
        std::array<pollfd, 2> polled { pollfd { exited, POLLIN, 0 },
            pollfd { isAtEnd ? -1 : pipe, POLLIN, 0 } };
        auto const wait = static_cast<int>(std::min<long long>(left, INT_MAX));
        if (::poll(polled.data(), polled.size(), wait) <= 0)
            continue;
        if (polled[1].revents != 0)
            isAtEnd = !readAvailable(pipe, output, longestOutput);
        if (polled[0].revents != 0) {
            readRest(pipe, output);
            return true;
        }
    }
    return false;
}

} // namespace

void runChild(std::vector<std::string> const& arguments, ChildCompletion completion)
{
    auto const finish = [completion = std::move(completion)](ExitStatus status) {
        if (completion)
            post([completion, status] { completion(status); });
    };
    if (auto const child = spawnChild(arguments, discarded))
        watchChild(*child, finish);
    else
        finish(std::nullopt);
}

std::optional<std::string> readChildOutput(
    std::vector<std::string> const& arguments, std::chrono::milliseconds limit)
{
    NSPipe* const output = [NSPipe pipe];
    NSPipe* const exited = [NSPipe pipe];
    // There are none when the process has no descriptor left.
    if (!output || !exited)
        return std::nullopt;
    auto const deadline = Clock::now() + limit;
    auto const child = spawnChild(arguments, output.fileHandleForWriting.fileDescriptor);
    // The end of the output shows only when nobody here can write.
    [output.fileHandleForWriting closeFile];
    if (!child)
        return std::nullopt;
    auto const exit = std::make_shared<std::promise<ExitStatus>>();
    watchChild(*child, [exit, end = exited.fileHandleForWriting](ExitStatus status) {
        exit->set_value(status);
        [end closeFile];
    });
    std::string text;
    if (!readUntilExit(exited.fileHandleForReading.fileDescriptor,
            output.fileHandleForReading.fileDescriptor, deadline, text)) {
        ::kill(-*child, SIGKILL);
        return std::nullopt;
    }
    if (!exit->get_future().get() || text.size() > longestOutput)
        return std::nullopt;
    return text;
}

} // namespace quillbar::platform
