#pragma once

#include <string>

namespace quillbar {

/// Reports the outcome of runs to the person, as far as notifications are allowed. Main thread.
class RunNotifications {
public:
    /// Quiet, and never asks for the right to show notifications.
    void notifyRunSuccess(std::string const& name) const;

    /// With a sound; a click on it opens the shortcut. The first failure of the process asks for
    /// the right.
    void notifyRunFailed(std::string const& name);

private:
    bool didRequestNotifAuth_ = false;
};

} // namespace quillbar
