#pragma once

#include "linux/PrivateServer.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QEventLoop>

namespace quillbar::testing {

/// A session bus of the test's own, named in DBUS_SESSION_BUS_ADDRESS; stopped on destruction.
class PrivateBus {
public:
    /// `configuration` is the daemon's option for it.
    explicit PrivateBus(QString const& configuration = QStringLiteral("--session"))
        : server_("dbus-daemon", { configuration, "--nofork", "--print-address=1" })
    {
        qputenv("DBUS_SESSION_BUS_ADDRESS", server_.address().toUtf8());
    }

    /// Another peer on the bus.
    [[nodiscard]] QDBusConnection connect(QString const& name) const
    {
        return QDBusConnection::connectToBus(server_.address(), name);
    }

private:
    PrivateServer server_;
};

/// Leaves the bus when `object` is gone, whose last registration on the connection was before: Qt
/// closes a connection on a thread of its own, where it still looks at what is registered.
inline void disconnectAfter(QObject const& object, QDBusConnection const& connection)
{
    // Called after Qt's own slot, which takes the object out of the connection.
    QObject::connect(&object, &QObject::destroyed,
        [name = connection.name()] { QDBusConnection::disconnectFromBus(name); });
}

/// Runs the event loop until the answer is there, so that the callee may live in the same thread.
[[nodiscard]] inline QDBusMessage ask(QDBusConnection const& connection, QDBusMessage const& call)
{
    QDBusPendingCallWatcher watcher(connection.asyncCall(call));
    QEventLoop loop;
    QObject::connect(&watcher, &QDBusPendingCallWatcher::finished, &loop, &QEventLoop::quit);
    if (!watcher.isFinished())
        loop.exec();
    return watcher.reply();
}

} // namespace quillbar::testing
