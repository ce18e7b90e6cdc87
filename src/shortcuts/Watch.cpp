#include "shortcuts/Watch.h"

#include "shortcuts/RunLog.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <fcntl.h>
#include <glib.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/wait.h>
#include <unistd.h>

// The header of glibc 2.36 does not say so itself.
extern "C" {
#include <sys/pidfd.h>
}

namespace quillbar::shortcuts {

namespace {

constexpr int forwarded[]
    = { SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGUSR1, SIGUSR2, SIGALRM, SIGWINCH, SIGCONT };

/// The path of the shortcut's file, shared with the copy that finds it.
char* sharedPath = nullptr;

volatile pid_t watched = 0;

/// To the whole group, as this process's own group may have been meant.
void forward(int signal)
{
    auto const before = errno;
    if (kill(-watched, signal) != 0)
        kill(watched, signal);
    errno = before;
}

/// The end of a text of any length.
class Tail {
public:
    /// Appends up to `limit` bytes of what the pipe holds; as read().
    ssize_t append(int pipe, std::size_t limit)
    {
        if (end_ == text_.size()) {
            std::copy(text_.end() - kept, text_.end(), text_.begin());
            end_ = kept;
        }
        auto const count = read(pipe, text_.data() + end_, std::min(limit, text_.size() - end_));
        if (count > 0) {
            end_ += static_cast<std::size_t>(count);
            length_ += static_cast<std::size_t>(count);
        }
        return count;
    }

    [[nodiscard]] std::string_view text() const
    {
        auto const size = std::min<std::size_t>(end_, kept);
        return { text_.data() + end_ - size, size };
    }
    [[nodiscard]] bool isCut() const { return length_ > kept; }

private:
    static constexpr std::ptrdiff_t kept = 65536;

    std::array<char, 2 * kept> text_;
    std::size_t end_ = 0;
    /// Of the whole text.
    std::uint64_t length_ = 0;
};

void handleSignals(void (*handler)(int))
{
    struct sigaction action { };
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (auto const number : forwarded)
        sigaction(number, &action, nullptr);
}

bool isDiscarded(int descriptor)
{
    struct stat status { };
    return fstat(descriptor, &status) == 0 && S_ISCHR(status.st_mode)
        && status.st_rdev == makedev(1, 3);
}

/// Reads the pipe until the child exits; what it left in the background may hold the pipe longer.
void readUntilEnd(pid_t child, int pipe, Tail& tail)
{
    auto const ended = pidfd_open(child, 0);
    std::array<pollfd, 2> polled { pollfd { ended, POLLIN, 0 }, pollfd { pipe, POLLIN, 0 } };
    while (polled[0].revents == 0) {
        if (poll(polled.data(), polled.size(), -1) > 0 && polled[1].revents != 0
            && tail.append(pipe, SIZE_MAX) == 0)
            polled[1].fd = -1;
    }
    // What is there now, and not what others write meanwhile.
    int rest = 0;
    ioctl(pipe, FIONREAD, &rest);
    while (rest > 0)
        rest -= static_cast<int>(tail.append(pipe, static_cast<std::size_t>(rest)));
}

/// What the shortcut left in the background may still write, which must neither end nor stop it.
void discardInBackground(int pipe)
{
    pollfd polled { pipe, POLLIN, 0 };
    poll(&polled, 1, 0);
    if ((polled.revents & POLLHUP) != 0 || fork() != 0)
        return;
    setsid();
    dup2(pipe, STDIN_FILENO);
    close_range(STDOUT_FILENO, ~0U, 0);
    std::array<char, 65536> buffer;
    while (read(STDIN_FILENO, buffer.data(), buffer.size()) > 0) { }
    _exit(0);
}

[[noreturn]] void endAs(int status)
{
    if (WIFSIGNALED(status)) {
        // The shortcut has left its own memory image, where that is wanted.
        prctl(PR_SET_DUMPABLE, 0);
        signal(WTERMSIG(status), SIG_DFL);
        raise(WTERMSIG(status));
    }
    _exit(WEXITSTATUS(status));
}

[[noreturn]] void watch(std::string const& name, int pipe)
{
    using std::chrono::steady_clock;
    static Tail tail;
    EndedRun run { .name = name, .began = std::chrono::system_clock::now() };
    auto const began = steady_clock::now();
    readUntilEnd(watched, pipe, tail);
    run.duration
        = std::chrono::duration_cast<std::chrono::milliseconds>(steady_clock::now() - began);
    // Before its process id can be another's.
    handleSignals(SIG_IGN);
    waitpid(watched, &run.status, 0);
    run.file = sharedPath;
    run.output = tail.text();
    run.isCut = tail.isCut();
    writeLog(run);
    discardInBackground(pipe);
    endAs(run.status);
}

} // namespace

bool hasTerminal()
{
    auto const terminal = open("/dev/tty", O_RDONLY | O_NOCTTY | O_CLOEXEC);
    if (terminal >= 0)
        close(terminal);
    return terminal >= 0;
}

bool continueWatched(std::string const& name)
{
    auto* const shared
        = mmap(nullptr, PATH_MAX, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    int ends[2];
    if (shared == MAP_FAILED || pipe2(ends, O_CLOEXEC) != 0)
        return false;
    // Fewer turns with a shortcut that prints gigabytes.
    fcntl(ends[0], F_SETPIPE_SZ, 1 << 20);
    sharedPath = static_cast<char*>(shared);
    // An ignored one would take the status away.
    signal(SIGCHLD, SIG_DFL);
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    sigprocmask(SIG_BLOCK, &all, &before);
    watched = fork();
    if (watched > 0) {
        handleSignals(forward);
        sigprocmask(SIG_SETMASK, &before, nullptr);
        close(ends[1]);
        watch(name, ends[0]);
    }
    sigprocmask(SIG_SETMASK, &before, nullptr);
    if (watched < 0)
        return false;
    // As the leader that it would be without a watch; killed with this process, as if it were it.
    setsid();
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    for (auto const descriptor : { STDOUT_FILENO, STDERR_FILENO }) {
        if (isDiscarded(descriptor))
            dup2(ends[1], descriptor);
    }
    return true;
}

void tellWatch(std::string const& file)
{
    if (sharedPath)
        g_strlcpy(sharedPath, file.c_str(), PATH_MAX);
}

} // namespace quillbar::shortcuts
