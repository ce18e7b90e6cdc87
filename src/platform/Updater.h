#pragma once

#include <memory>

namespace quillbar::platform {

/// The system's way of updating programs. Main thread.
class Updater {
public:
    Updater() = default;
    Updater(Updater const&) = delete;
    Updater& operator=(Updater const&) = delete;
    virtual ~Updater() = default;

    /// Looks for a new version and shows the person what was found.
    virtual void checkForUpdates() = 0;
};

/// Starts the updater; null where the system has none.
[[nodiscard]] std::unique_ptr<Updater> startUpdater();

} // namespace quillbar::platform
