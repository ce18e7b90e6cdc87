#include "platform/ChildProcess.h"

#include "platform/MainQueue.h"
#include "platform/linux/BlockedWait.h"
#include "platform/linux/system/ChildWatcher.h"
#include "platform/linux/system/Spawn.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>

namespace quillbar::platform {

namespace {

// What lies beyond is read, so that the child can end, and thrown away.
constexpr std::size_t longestOutput = std::size_t { 64 } * 1024 * 1024;

class OutputReader {
public:
    explicit OutputReader(int descriptor)
        : descriptor_(descriptor)
    {
    }

    [[nodiscard]] bool isAtEnd() const { return isAtEnd_; }
    [[nodiscard]] std::string takeOutput() { return std::move(output_); }

    std::size_t readUpTo(std::size_t limit)
    {
        auto const count = ::read(descriptor_, buffer_.data(), std::min(limit, buffer_.size()));
        if (count <= 0) {
            isAtEnd_ = count == 0 || (errno != EINTR && errno != EAGAIN);
            return 0;
        }
        auto const size = static_cast<std::size_t>(count);
        output_.append(buffer_.data(), std::min(size, longestOutput - output_.size()));
        return size;
    }

    void readAvailable() { readUpTo(buffer_.size()); }

    /// What is in the pipe now, not what comes in meanwhile.
    void readRest()
    {
        int available = 0;
        if (::ioctl(descriptor_, FIONREAD, &available) != 0)
            return;
        auto left = static_cast<std::size_t>(std::max(available, 0));
        while (left > 0 && !isAtEnd_)
            left -= readUpTo(left);
    }

private:
    int descriptor_;
    bool isAtEnd_ = false;
    std::string output_;
    std::array<char, 65536> buffer_ {};
};

void readUntilExit(pid_t child, int pipe, OutputReader& reader)
{
    auto const descriptor = openChild(child);
    // Without a descriptor there is nothing to wait on but the clock.
    int const timeout = descriptor ? -1 : 20;
    auto const& service = blockedService();
    if (service.serve)
        service.serve();
    auto serviced = service.descriptor;
    for (;;) {
        std::array<pollfd, 3> polled { pollfd { descriptor.get(), POLLIN, 0 },
            pollfd { reader.isAtEnd() ? -1 : pipe, POLLIN, 0 }, pollfd { serviced, POLLIN, 0 } };
        if (::poll(polled.data(), polled.size(), timeout) < 0)
            continue;
        if (polled[1].revents != 0)
            reader.readAvailable();
        if ((polled[2].revents & POLLIN) != 0)
            service.serve();
        if ((polled[2].revents & (POLLERR | POLLHUP | POLLNVAL)) != 0)
            serviced = -1;
        if ((polled[0].revents != 0 || !descriptor) && reapChild(child))
            return;
    }
}

} // namespace

void runChild(std::vector<std::string> const& arguments, ChildCompletion completion)
{
    if (auto const child = spawnChild(arguments, ChildOutput {})) {
        childWatcher().watch(*child, std::move(completion));
        return;
    }
    if (completion)
        post([completion = std::move(completion)] { completion(std::nullopt); });
}

std::optional<std::string> readChildOutput(std::vector<std::string> const& arguments)
{
    std::array<int, 2> ends { -1, -1 };
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        return std::nullopt;
    FileDescriptor const readEnd { ends[0] };
    FileDescriptor writeEnd { ends[1] };
    // Only this end: the child's must block, as programs expect of their output.
    ::fcntl(readEnd.get(), F_SETFL, O_NONBLOCK);

    auto const child = spawnChild(arguments, ChildOutput { writeEnd.get() });
    if (!child)
        return std::nullopt;
    // The end of the output shows only when nobody here can write.
    writeEnd = FileDescriptor {};

    OutputReader reader(readEnd.get());
    readUntilExit(*child, readEnd.get(), reader);
    reader.readRest();
    return reader.takeOutput();
}

} // namespace quillbar::platform
