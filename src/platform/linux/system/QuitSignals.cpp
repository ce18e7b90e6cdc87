#include "platform/linux/system/QuitSignals.h"

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <sys/eventfd.h>
#include <utility>

namespace quillbar::platform {

namespace {

constexpr int quitSignals[] = { SIGTERM, SIGINT, SIGHUP };

std::atomic<int> receivedDescriptor { -1 };

void noteSignal(int /*signal*/)
{
    auto const savedError = errno;
    std::uint64_t const one = 1;
    // Nothing can be done about a failure in here, and the next signal ends the process.
    [[maybe_unused]] auto const written = ::write(receivedDescriptor, &one, sizeof one);
    errno = savedError;
}

void handle(int signal)
{
    struct sigaction action { };
    ::sigaction(signal, nullptr, &action);
    if (action.sa_handler == SIG_IGN)
        return;
    action = {};
    action.sa_handler = noteSignal;
    action.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
    ::sigaction(signal, &action, nullptr);
}

void restore(int signal)
{
    struct sigaction action { };
    ::sigaction(signal, nullptr, &action);
    if (action.sa_handler == noteSignal)
        ::signal(signal, SIG_DFL);
}

} // namespace

QuitSignals::QuitSignals(std::function<void()> onQuit)
    : received_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
    , notifier_(received_.get(), QSocketNotifier::Read)
{
    QObject::connect(&notifier_, &QSocketNotifier::activated,
        [descriptor = received_.get(), onQuit = std::move(onQuit)] {
            eventfd_t count = 0;
            ::eventfd_read(descriptor, &count);
            onQuit();
        });
    receivedDescriptor = received_.get();
    for (auto const signal : quitSignals)
        handle(signal);
}

QuitSignals::~QuitSignals()
{
    for (auto const signal : quitSignals)
        restore(signal);
    receivedDescriptor = -1;
}

} // namespace quillbar::platform
