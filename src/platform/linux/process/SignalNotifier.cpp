#include "platform/linux/process/SignalNotifier.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <sys/eventfd.h>
#include <utility>

namespace quillbar::platform {

namespace {

// By signal, the event descriptor of its notifier.
std::array<std::atomic<int>, NSIG> descriptors;

void noteSignal(int signal)
{
    auto const savedError = errno;
    std::uint64_t const one = 1;
    // It fails only when the count cannot grow, and then the descriptor is readable already.
    [[maybe_unused]] auto const written
        = ::write(descriptors[static_cast<std::size_t>(signal)], &one, sizeof one);
    errno = savedError;
}

void handle(int signal, int flags)
{
    struct sigaction action { };
    ::sigaction(signal, nullptr, &action);
    if (action.sa_handler == SIG_IGN)
        return;
    action = {};
    action.sa_handler = noteSignal;
    action.sa_flags = SA_RESTART | flags;
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

SignalNotifier::SignalNotifier(std::vector<int> signals, int flags, std::function<void()> onSignal)
    : signals_(std::move(signals))
    , received_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
    , notifier_(received_.get(), QSocketNotifier::Read)
{
    QObject::connect(&notifier_, &QSocketNotifier::activated,
        [descriptor = received_.get(), onSignal = std::move(onSignal)] {
            eventfd_t count = 0;
            ::eventfd_read(descriptor, &count);
            onSignal();
        });
    for (auto const signal : signals_) {
        descriptors[static_cast<std::size_t>(signal)] = received_.get();
        handle(signal, flags);
    }
}

SignalNotifier::~SignalNotifier()
{
    for (auto const signal : signals_)
        restore(signal);
}

} // namespace quillbar::platform
