#pragma once

#include "platform/ChildProcess.h"
#include "platform/linux/system/FileDescriptor.h"

#include <QSocketNotifier>
#include <QTimer>

#include <memory>
#include <sys/types.h>
#include <unordered_map>

namespace quillbar::platform {

/// Waits for children on the event loop and leaves no zombie. Main thread.
class ChildWatcher {
public:
    ChildWatcher();
    ChildWatcher(ChildWatcher const&) = delete;
    ChildWatcher& operator=(ChildWatcher const&) = delete;
    ~ChildWatcher() = default;

    /// Calls `completion`, if there is one, through the event loop when the child has exited.
    void watch(pid_t child, ChildCompletion completion);

    /// The children run on, nobody is told of their exit.
    void forgetAll();

private:
    // Its signal may be what ends it.
    struct DeleteLater {
        void operator()(QSocketNotifier* notifier) const;
    };
    struct Watch {
        FileDescriptor descriptor;
        std::unique_ptr<QSocketNotifier, DeleteLater> notifier;
        ChildCompletion completion;
    };

    bool listen(pid_t child, Watch& watch);
    void collect(pid_t child);
    void sweep();

    std::unordered_map<pid_t, Watch> watches_;
    // Runs only while a child could be given no descriptor.
    QTimer sweeper_;
};

/// The process's one watcher, made on first use.
[[nodiscard]] ChildWatcher& childWatcher();

} // namespace quillbar::platform
