#include "linux/PrivateBus.h"

#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QEventLoop>

#include <stdexcept>

namespace quillbar::testing {

PrivateBus::PrivateBus(QString const& configuration)
{
    daemon_.start("dbus-daemon", { configuration, "--nofork", "--print-address=1" });
    while (!daemon_.canReadLine()) {
        if (!daemon_.waitForReadyRead(60'000))
            throw std::runtime_error("dbus-daemon does not start");
    }
    address_ = QString::fromUtf8(daemon_.readLine()).trimmed();
    qputenv("DBUS_SESSION_BUS_ADDRESS", address_.toUtf8());
}

PrivateBus::~PrivateBus()
{
    daemon_.terminate();
    daemon_.waitForFinished();
}

QDBusConnection PrivateBus::connect(QString const& name) const
{
    return QDBusConnection::connectToBus(address_, name);
}

void disconnectAfter(QObject const& object, QDBusConnection const& connection)
{
    // Called after Qt's own slot, which takes the object out of the connection.
    QObject::connect(&object, &QObject::destroyed,
        [name = connection.name()] { QDBusConnection::disconnectFromBus(name); });
}

QDBusMessage ask(QDBusConnection connection, QDBusMessage const& call)
{
    QDBusPendingCallWatcher watcher(connection.asyncCall(call));
    QEventLoop loop;
    QObject::connect(&watcher, &QDBusPendingCallWatcher::finished, &loop, &QEventLoop::quit);
    if (!watcher.isFinished())
        loop.exec();
    return watcher.reply();
}

} // namespace quillbar::testing
