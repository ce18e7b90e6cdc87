#pragma once

#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>

#include <functional>

namespace quillbar::platform {

/// Whether something on the bus collects status items and something shows them.
enum class TrayHost { Present, Absent };

/// Registers the program's status item with the session's status-notifier watcher, and again with
/// every new one. Waits for nothing and starts no service. Main thread.
class HostRegistration : public QObject {
    Q_OBJECT

public:
    /// `onHost` is called, through the event loop, whenever it is known whether there is a host; it
    /// may be told the same twice.
    explicit HostRegistration(std::function<void(TrayHost)> onHost);

    /// Asks the watcher once more; `onHost` is called with the answer.
    Q_SLOT void askForHost();

    /// Cinnamon shows no icon with "symbolic" in the path of its file. Known once the item is
    /// registered.
    [[nodiscard]] bool showsSymbolicIcons() const { return showsSymbolicIcons_; }

private:
    void call(QDBusMessage message, void (HostRegistration::*answered)(QDBusMessage const& reply));
    void registerItem();
    void cinnamonAnswered(QDBusMessage const& reply);
    void registered(QDBusMessage const& reply);
    void hostAnswered(QDBusMessage const& reply);
    void ownerChanged(QString const& newOwner);

    std::function<void(TrayHost)> onHost_;
    QDBusServiceWatcher watcher_;
    bool showsSymbolicIcons_ = true;
};

} // namespace quillbar::platform
