#pragma once

#include "platform/linux/system/FileDescriptor.h"

#include <QSocketNotifier>

#include <functional>
#include <memory>

namespace quillbar::platform {

/// Turns the signals that ask a program to end (SIGTERM, SIGINT, SIGHUP) into a call on the event
/// loop. A signal that was ignored when the program started stays ignored, and a second one ends
/// the process at once. One at a time; main thread.
class QuitSignals {
public:
    explicit QuitSignals(std::function<void()> onQuit);
    QuitSignals(QuitSignals const&) = delete;
    QuitSignals& operator=(QuitSignals const&) = delete;
    ~QuitSignals();

private:
    FileDescriptor received_;
    QSocketNotifier notifier_;
};

} // namespace quillbar::platform
