#pragma once

#include "platform/linux/process/FileDescriptor.h"

#include <QSocketNotifier>

#include <functional>
#include <vector>

namespace quillbar::platform {

/// Turns signals of the process into a call on the event loop: one for all that arrived since the
/// last. A signal that was ignored when the program started stays ignored. One notifier for each
/// signal at a time; main thread.
class SignalNotifier {
public:
    /// `flags` are those of sigaction().
    SignalNotifier(std::vector<int> signals, int flags, std::function<void()> onSignal);
    SignalNotifier(SignalNotifier const&) = delete;
    SignalNotifier& operator=(SignalNotifier const&) = delete;
    ~SignalNotifier();

private:
    std::vector<int> signals_;
    FileDescriptor received_;
    QSocketNotifier notifier_;
};

} // namespace quillbar::platform
