#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>

#include <functional>

namespace quillbar::platform {

/// Whether something on the bus collects status items.
enum class TrayHost { Present, Absent };

/// Registers the program's status item with the session's status-notifier watcher, and again with
/// every new one. Waits for nothing and starts no service. Main thread.
class HostRegistration : public QObject {
public:
    /// `onHost` is called, through the event loop, whenever it is known whether there is a watcher.
    HostRegistration(QDBusConnection connection, std::function<void(TrayHost)> onHost);

private:
    void registerItem();
    void ownerChanged(QString const& newOwner);

    QDBusConnection connection_;
    std::function<void(TrayHost)> onHost_;
    QDBusServiceWatcher watcher_;
};

} // namespace quillbar::platform
