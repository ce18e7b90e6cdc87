#include "platform/ChildProcess.h"
#include "platform/linux/process/BlockingWait.h"
#include "platform/linux/process/Child.h"
#include "platform/linux/process/FileDescriptor.h"

#include <QDeadlineTimer>

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

// The header of glibc 2.36 does not say so itself.
extern "C" {
#include <sys/pidfd.h>
}

namespace quillbar::platform {

namespace {

constexpr std::size_t longestOutput = std::size_t { 64 } * 1024 * 1024;

/// Appends up to `limit` bytes of what the pipe holds; false at its end.
bool readAvailable(int pipe, std::string& output, std::size_t limit)
{
    std::array<char, 65536> buffer;
    auto const count = ::read(pipe, buffer.data(), std::min(limit, buffer.size()));
    if (count > 0)
        output.append(buffer.data(), static_cast<std::size_t>(count));
    return count > 0 || (count < 0 && (errno == EINTR || errno == EAGAIN));
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

/// Reads until the child has exited; nothing when it went beyond a limit and still runs.
std::optional<ChildExit> readUntilExit(
    pid_t child, int pipe, QDeadlineTimer const& deadline, std::string& output)
{
    FileDescriptor const exited { ::pidfd_open(child, 0) };
    bool isAtEnd = false;
    while (exited && output.size() <= longestOutput && !deadline.hasExpired()) {
        std::array<pollfd, 2> polled { pollfd { exited.get(), POLLIN, 0 },
            pollfd { isAtEnd ? -1 : pipe, POLLIN, 0 } };
        if (::poll(polled.data(), polled.size(), static_cast<int>(deadline.remainingTime())) <= 0)
            continue;
        if (polled[1].revents != 0)
            isAtEnd = !readAvailable(pipe, output, longestOutput);
        if (polled[0].revents == 0)
            continue;
        if (auto const exit = reapChild(child)) {
            readRest(pipe, output);
            return exit;
        }
    }
    return std::nullopt;
}

} // namespace

std::optional<std::string> readChildOutput(
    std::vector<std::string> const& arguments, std::chrono::milliseconds limit)
{
    std::array<int, 2> ends { -1, -1 };
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        return std::nullopt;
    FileDescriptor const readEnd { ends[0] };
    FileDescriptor writeEnd { ends[1] };
    // Only this end: the child's must block, as programs expect of their output.
    ::fcntl(readEnd.get(), F_SETFL, O_NONBLOCK);

    BlockingWait const wait;
    QDeadlineTimer const deadline { limit };
    auto const child = spawnChild(arguments, writeEnd.get());
    if (!child)
        return std::nullopt;
    // The end of the output shows only when nobody here can write.
    writeEnd = FileDescriptor {};
    std::string output;
    auto const exit = readUntilExit(*child, readEnd.get(), deadline, output);
    if (!exit)
        killWithItsChildren(*child);
    if (!exit || !exit->status || output.size() > longestOutput)
        return std::nullopt;
    return output;
}

} // namespace quillbar::platform
