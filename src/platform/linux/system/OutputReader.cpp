#include "platform/linux/system/OutputReader.h"

#include "platform/ChildProcess.h"
#include "platform/linux/system/ChildWatcher.h"
#include "platform/linux/system/Spawn.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QSocketNotifier>
#include <QTimer>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <utility>

namespace quillbar::platform {

OutputReader::OutputReader(pid_t child, FileDescriptor pipe, OutputLimits const& limits)
    : child_(child)
    , pipe_(std::move(pipe))
    , exit_(openChild(child))
    , limits_(limits)
{
}

OutputReader::~OutputReader()
{
    if (hasExited_)
        return;
    // It leads a session of its own, and so the group of what it started.
    ::kill(-child_, SIGKILL);
    ::kill(child_, SIGKILL);
    // Not waited for here: the system may take its time to end it.
    childWatcher().watch(child_, {});
}

std::optional<std::string> OutputReader::readUntilExit()
{
    // Without a descriptor nothing would tell of the exit.
    if (!exit_)
        return std::nullopt;
    QDeadlineTimer const deadline { limits_.inAll };
    waitBlocked();
    if (!isOver())
        waitServingEvents(std::chrono::milliseconds { deadline.remainingTime() });
    if (hasExited_)
        readRest();
    if (!hasExited_ || isTooLong())
        return std::nullopt;
    return std::move(output_);
}

void OutputReader::waitBlocked()
{
    QDeadlineTimer const deadline { limits_.withoutEvents };
    while (!isOver() && !deadline.hasExpired()) {
        std::array<pollfd, 2> polled { pollfd { exit_.get(), POLLIN, 0 },
            pollfd { isAtEnd_ ? -1 : pipe_.get(), POLLIN, 0 } };
        auto const timeout = static_cast<int>(deadline.remainingTime());
        if (::poll(polled.data(), polled.size(), timeout) <= 0)
            continue;
        if (polled[1].revents != 0)
            readAvailable();
        if (polled[0].revents != 0)
            checkExit();
    }
}

// Another wait may run inside this one and outlast it, so whatever ends this one also silences it.
void OutputReader::waitServingEvents(std::chrono::milliseconds longest)
{
    QEventLoop loop;
    QSocketNotifier exited(exit_.get(), QSocketNotifier::Read);
    QSocketNotifier readable(pipe_.get(), QSocketNotifier::Read);
    auto const follow = [&] {
        exited.setEnabled(!isOver());
        readable.setEnabled(!isOver() && !isAtEnd_);
        if (isOver())
            loop.quit();
    };
    QObject::connect(&exited, &QSocketNotifier::activated, &loop, [&] {
        checkExit();
        follow();
    });
    QObject::connect(&readable, &QSocketNotifier::activated, &loop, [&] {
        readAvailable();
        follow();
    });
    QTimer::singleShot(longest, &loop, &QEventLoop::quit);
    follow();
    // Returns at once when the program ends.
    loop.exec();
}

void OutputReader::checkExit()
{
    hasExited_ = reapChild(child_).has_value();
}

std::size_t OutputReader::read(std::size_t limit)
{
    auto const count = ::read(pipe_.get(), buffer_.data(), std::min(limit, buffer_.size()));
    if (count <= 0) {
        isAtEnd_ = count == 0 || (errno != EINTR && errno != EAGAIN);
        return 0;
    }
    output_.append(buffer_.data(), static_cast<std::size_t>(count));
    return static_cast<std::size_t>(count);
}

/// What is in the pipe now, not what grandchildren write meanwhile.
void OutputReader::readRest()
{
    int available = 0;
    if (::ioctl(pipe_.get(), FIONREAD, &available) != 0)
        return;
    auto left = static_cast<std::size_t>(std::max(available, 0));
    while (left > 0 && !isAtEnd_)
        left -= read(left);
}

std::optional<std::string> readChildOutput(
    std::vector<std::string> const& arguments, OutputLimits const& limits)
{
    std::array<int, 2> ends { -1, -1 };
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        return std::nullopt;
    FileDescriptor readEnd { ends[0] };
    FileDescriptor writeEnd { ends[1] };
    // Only this end: the child's must block, as programs expect of their output.
    ::fcntl(readEnd.get(), F_SETFL, O_NONBLOCK);

    auto const child = spawnChild(arguments, ChildOutput { writeEnd.get() });
    if (!child)
        return std::string();
    // The end of the output shows only when nobody here can write.
    writeEnd = FileDescriptor {};
    return OutputReader(*child, std::move(readEnd), limits).readUntilExit();
}

std::optional<std::string> readChildOutput(std::vector<std::string> const& arguments)
{
    return readChildOutput(arguments, OutputLimits {});
}

} // namespace quillbar::platform
